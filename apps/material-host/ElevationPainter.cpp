#include "ElevationPainter.h"

#include "BuildingShadows.h"

#include <QLinearGradient>
#include <QRadialGradient>

namespace {

void paintSky(QPainter& painter, const QRect& area, double horizon)
{
    QLinearGradient sky(0, area.top(), 0, horizon);
    sky.setColorAt(0, QColor(122, 172, 217));
    sky.setColorAt(0.55, QColor(181, 212, 236));
    sky.setColorAt(1, QColor(236, 243, 246));
    painter.fillRect(area, sky);
}

/// The light from above: a little more at the top of a surface than at its foot.
QBrush daylight(const QRectF& bounds)
{
    QLinearGradient light(bounds.topLeft(), bounds.bottomLeft());
    light.setColorAt(0, QColor(255, 255, 255, 26));
    light.setColorAt(0.5, QColor(255, 255, 255, 0));
    light.setColorAt(1, QColor(0, 0, 0, 34));
    return light;
}

QBrush roundLight(const QRectF& bounds)
{
    const QPointF focus = bounds.center() - QPointF(bounds.width() * 0.2, bounds.height() * 0.24);
    QRadialGradient light(bounds.center(), qMax(bounds.width(), bounds.height()) * 0.62, focus);
    light.setColorAt(0, QColor(255, 255, 225, 80));
    light.setColorAt(0.5, QColor(255, 255, 255, 0));
    light.setColorAt(1, QColor(0, 10, 20, 105));
    return light;
}

/// The sky's reflection on what shines: slanting bands, stronger the glossier the surface.
QBrush reflection(const QRectF& bounds, double gloss)
{
    QLinearGradient bands(bounds.topLeft(), bounds.bottomRight());
    const auto white = [&](int alpha) { return QColor(255, 255, 255, qRound(alpha * gloss)); };
    bands.setColorAt(0, white(92));
    bands.setColorAt(0.28, white(26));
    bands.setColorAt(0.42, white(26));
    bands.setColorAt(0.45, white(104));
    bands.setColorAt(0.56, white(70));
    bands.setColorAt(0.59, white(12));
    bands.setColorAt(1, white(0));
    return bands;
}

void paintScenery(QPainter& painter, const QPainterPath& path, const BuildingElement& element)
{
    const QRectF bounds = path.boundingRect();
    QLinearGradient colours(bounds.topLeft(), bounds.bottomLeft());
    colours.setColorAt(0, element.top);
    colours.setColorAt(1, element.bottom);
    painter.fillPath(path, colours);
    if (element.round)
        painter.fillPath(path, roundLight(bounds));
}

void paintMaterial(QPainter& painter, const QPainterPath& path, const BuildingElement& element,
                   const MaterialLook& look)
{
    const QRectF bounds = path.boundingRect();
    painter.setOpacity(look.opacity);
    painter.fillPath(path, look.brush);
    painter.setOpacity(1);
    painter.fillPath(path, element.round ? roundLight(bounds) : daylight(bounds));
    if (look.gloss > 0.5)
        painter.fillPath(path, reflection(bounds, (look.gloss - 0.5) * 1.6));
}

}  // namespace

void ElevationPainter::paint(QPainter& painter, const QRect& area, const ElevationScale& scale,
                             const MaterialOf& materialOf) const
{
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    paintSky(painter, area, scale.origin.y());
    for (const BuildingElement& element : m_building.elements)
        paintElement(painter, element, scale, element.takesMaterial() ? materialOf(element.id) : nullptr);
}

void ElevationPainter::paintElement(QPainter& painter, const BuildingElement& element, const ElevationScale& scale,
                                    const kiv::CAppearanceInstancePtr& material) const
{
    const QTransform toPixels = scale.toPixels();
    const QPainterPath path = toPixels.map(element.outline);
    if (material)
        paintMaterial(painter, path, element, m_fill.look(*material, scale, element.tilt));
    else
        paintScenery(painter, path, element);
    painter.fillPath(toPixels.map(m_shadows.on(element.id)), QColor(18, 26, 48, 82));
    if (element.takesMaterial())
        painter.strokePath(path, QPen(QColor(38, 42, 50, element.round ? 60 : 150), 1));
}
