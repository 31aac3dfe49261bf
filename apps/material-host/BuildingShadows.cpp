#include "BuildingShadows.h"

#include "PathGeometry.h"

namespace {

const QPointF SunPerMetre(0.42, -0.5);  // shift of a shadow for each metre between what casts and what receives it
constexpr double MaxDistance = 0.6;     // metres; what is deeper inside is lit from elsewhere

QPainterPath shadowOf(const BuildingElement& caster, const BuildingElement& receiver)
{
    const double distance = qMin(caster.depth - receiver.depth, MaxDistance);
    return caster.outline.translated(SunPerMetre * distance);
}

QPainterPath shadowOn(const BuildingElement& receiver, const Building& building)
{
    QPainterPath shadow;
    const QRectF bounds = receiver.outline.boundingRect();
    for (const BuildingElement& caster : building.elements) {
        if (!caster.casts || caster.depth <= receiver.depth)
            continue;
        const QPainterPath cast = shadowOf(caster, receiver);
        if (cast.boundingRect().intersects(bounds))
            shadow = PathGeometry::united(shadow, cast);
    }
    return shadow.isEmpty() ? shadow : PathGeometry::intersected(shadow, receiver.outline);
}

}  // namespace

BuildingShadows::BuildingShadows(const Building& building)
{
    for (const BuildingElement& element : building.elements)
        if (element.receives)
            m_shadows.insert(element.id, shadowOn(element, building));
}
