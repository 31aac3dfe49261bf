#include "MaterialSwatch.h"

#include <QPainter>

QPixmap MaterialSwatch::picture(const kiv::CAppearanceInstance& appearance, const QSize& size,
                                qreal devicePixelRatio) const
{
    QPixmap picture(size * devicePixelRatio);
    picture.setDevicePixelRatio(devicePixelRatio);
    const QSizeF repeat = m_fill.repeatSize(appearance);
    ElevationScale scale;
    if (!repeat.isEmpty())
        scale.pixelsPerMetre = qMax(size.width() / repeat.width(), size.height() / repeat.height());
    const MaterialLook look = m_fill.look(appearance, scale);
    const QRect area(QPoint(0, 0), size);
    QPainter painter(&picture);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.fillRect(area, Qt::white);
    if (look.opacity < 1)
        painter.fillRect(area, QBrush(QColor(150, 160, 170), Qt::Dense4Pattern));
    painter.setOpacity(look.opacity);
    painter.fillRect(area, look.brush);
    painter.setOpacity(1);
    painter.setPen(QColor(0, 0, 0, 90));
    painter.drawRect(QRectF(area).adjusted(0.5, 0.5, -0.5, -0.5));
    return picture;
}
