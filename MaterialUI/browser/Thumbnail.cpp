#include "Thumbnail.h"

#include <kiv/TextureManager.h>

#include <QFileInfo>

namespace {

QImage middleNinth(const QImage& picture, const QSize& cell)
{
    const QImage scaled = picture.scaled(cell * 3, Qt::IgnoreAspectRatio, Qt::FastTransformation);
    return scaled.copy(QRect(QPoint(cell.width(), cell.height()), cell));
}

// Halves are taken of both sizes apart, as centring a pixmap in a rectangle does.
QImage middle(const QImage& picture, const QSize& cell)
{
    const QPoint corner(qMax(0, picture.width() / 2 - cell.width() / 2),
                        qMax(0, picture.height() / 2 - cell.height() / 2));
    return picture.copy(QRect(corner, cell.boundedTo(picture.size())));
}

}  // namespace

FileStamp StampOf(const QString& file)
{
    const QFileInfo info(file);
    return info.exists() ? FileStamp{info.size(), info.lastModified()} : FileStamp();
}

QImage LoadThumbnail(const ThumbnailKey& key)
{
    QImage result;
    kiv::CTextureManager::TextureHelper(key.file.toStdWString(), [&](int width, int height, const unsigned char* rgba) {
        const QImage picture(rgba, width, height, width * 4, QImage::Format_RGBA8888);
        result = key.kind == ThumbnailKey::MiddleNinth ? middleNinth(picture, key.size) : middle(picture, key.size);
    });
    return result.isNull() ? result : result.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}
