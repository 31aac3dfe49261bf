#include "BuildingSolids.h"

#include "PathGeometry.h"

namespace {

constexpr double HorizonDepth = -10;  // metres; the sky box shows what is behind
constexpr double GroundDepth = 4;
constexpr double WallThickness = 0.25;
constexpr double WallSide = 2;
constexpr double TrimThickness = 0.06;
constexpr double MaxRoundThickness = 1.6;

bool isShownInSpace(const BuildingElement& element)
{
    if (element.takesMaterial())
        return true;
    const bool opaque = element.top.alpha() == 255 && element.bottom.alpha() == 255;
    return opaque && element.depth > HorizonDepth;
}

double thicknessOf(const BuildingElement& element, const QRectF& bounds)
{
    const double side = qMin(bounds.width(), bounds.height());
    if (element.round)
        return qMin(side / 2, MaxRoundThickness);
    if (!element.takesMaterial())
        return TrimThickness;
    if (bounds.top() < 0 && bounds.bottom() <= WallThickness)
        return element.depth + GroundDepth;
    return side >= WallSide ? WallThickness : TrimThickness;
}

BuildingSolid byRule(const BuildingElement& element)
{
    const QRectF bounds = element.outline.boundingRect();
    BuildingSolid solid;
    solid.outline = element.outline;
    if (element.tilt < 1) {
        solid.back = element.depth;
        solid.front = solid.back + bounds.height() / element.tilt;
        return solid;
    }
    const double thickness = qMax(thicknessOf(element, bounds), TrimThickness);
    solid.front = element.depth + (element.round ? thickness / 2 : 0);
    solid.back = solid.front - thickness;
    return solid;
}

}  // namespace

QVector<BuildingSolid> BuildingSolids::of(const BuildingElement& element, const QRectF& extent)
{
    if (!isShownInSpace(element))
        return {};
    QVector<BuildingSolid> solids = element.solids;
    if (solids.isEmpty())
        solids.append(byRule(element));
    QPainterPath shown;
    shown.addRect(extent);
    for (BuildingSolid& solid : solids)
        if (!extent.contains(solid.outline.boundingRect()))
            solid.outline = PathGeometry::intersected(solid.outline, shown);
    return solids;
}
