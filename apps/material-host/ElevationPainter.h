#pragma once

#include "Building.h"
#include "MaterialFill.h"

#include <QPainter>

#include <functional>

class BuildingShadows;

/// Draws the building: sky, then every element from back to front with its material, the sun's light and shadow, and
/// its outline.
class ElevationPainter {
public:
    using MaterialOf = std::function<kiv::CAppearanceInstancePtr(const QString& elementId)>;

    ElevationPainter(const Building& building, const BuildingShadows& shadows, const MaterialFill& fill)
        : m_building(building), m_shadows(shadows), m_fill(fill)
    {
    }

    void paint(QPainter& painter, const QRect& area, const ElevationScale& scale, const MaterialOf& materialOf) const;

private:
    void paintElement(QPainter& painter, const BuildingElement& element, const ElevationScale& scale,
                      const kiv::CAppearanceInstancePtr& material) const;

    const Building& m_building;
    const BuildingShadows& m_shadows;
    const MaterialFill& m_fill;
};
