#include "ContactSheet.h"

#include <QImage>
#include <QPainter>

namespace {

constexpr int Columns = 4;
constexpr int Tile = 448;
constexpr int Caption = 24;

void drawTexture(QPainter& painter, const QString& name, const QString& folder, const QPoint& place)
{
    const QImage image(folder + QLatin1Char('/') + name + QStringLiteral(".png"));
    const QImage small = image.scaled(Tile / 2, Tile / 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    for (const QPoint& offset : {QPoint(0, 0), QPoint(Tile / 2, 0), QPoint(0, Tile / 2), QPoint(Tile / 2, Tile / 2)})
        painter.drawImage(place + offset, small);
    painter.drawText(QRect(place + QPoint(0, Tile), QSize(Tile, Caption)), Qt::AlignCenter, name);
}

}  // namespace

bool drawContactSheet(const QStringList& names, const QString& folder, const QString& file)
{
    const int rows = (names.size() + Columns - 1) / Columns;
    QImage sheet(Columns * (Tile + 8), rows * (Tile + Caption + 4), QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    for (int i = 0; i < names.size(); ++i)
        drawTexture(painter, names[i], folder, {i % Columns * (Tile + 8), i / Columns * (Tile + Caption + 4)});
    painter.end();
    return sheet.save(file);
}
