#include "Building.h"

#include <algorithm>

const BuildingElement* Building::find(const QString& id) const
{
    const auto found = std::find_if(elements.begin(), elements.end(),
                                    [&](const BuildingElement& element) { return element.id == id; });
    return found == elements.end() ? nullptr : &*found;
}

const BuildingElement* Building::at(const QPointF& point) const
{
    const auto found = std::find_if(elements.rbegin(), elements.rend(), [&](const BuildingElement& element) {
        return element.takesMaterial() && element.outline.contains(point);
    });
    return found == elements.rend() ? nullptr : &*found;
}
