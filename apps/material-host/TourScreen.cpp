#include "TourScreen.h"

#include "TourInput.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPolygon>
#include <QScreen>

namespace {

void drawPointer(QPainter& painter, const QPoint& tip)
{
    const QPolygon arrow({{0, 0}, {0, 16}, {4, 12}, {7, 19}, {9, 18}, {6, 11}, {11, 11}});
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::white, 1.2));
    painter.setBrush(Qt::black);
    painter.drawPolygon(arrow.translated(tip));
}

}  // namespace

QPixmap TourScreen::picture()
{
    QPixmap screen = QGuiApplication::primaryScreen()->grabWindow(0);
    QPainter painter(&screen);
    if (!TourInput::pointer().isNull())
        drawPointer(painter, TourInput::pointer());
    return screen;
}

bool TourScreen::save(const QString& path)
{
    return picture().save(path, "PNG");
}
