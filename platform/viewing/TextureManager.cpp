#include <kiv/TextureManager.h>

#include <kiv/system/StoredPath.h>

#include <QFile>
#include <QImageReader>

namespace kiv {

namespace {

bool hasDecodableSize(const QSize& size)
{
    return size.width() > 0 && size.height() > 0 &&
           static_cast<long long>(size.width()) * size.height() <= CTextureManager::MaxPixels;
}

// Drawings are no textures: they may refer to further files, and have no pixels of their own.
bool isDrawing(const QByteArray& format)
{
    return format == "svg" || format == "svgz" || format == "pdf";
}

// The JPEG decoder fills what is missing with grey and calls it a success. Whole files end with an end marker after
// their last start of scan, here looked for with room for what some programs append.
bool isCutOff(QFile& file, const QByteArray& format)
{
    if (format != "jpeg" && format != "jpg")
        return false;
    constexpr qint64 tailSize = 64 * 1024;
    file.seek(qMax<qint64>(0, file.size() - tailSize));
    const QByteArray tail = file.read(tailSize);
    file.seek(0);
    return tail.lastIndexOf("\xff\xd9") <= tail.lastIndexOf("\xff\xda");
}

// The picture as stored: a camera's note on how to turn it is not followed, since coordinates refer to the stored rows.
QImage decode(const QString& path)
{
    QFile file(path);
    if (!system::IsRegularFile(path) || !file.open(QIODevice::ReadOnly))
        return {};
    QImageReader reader(&file);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(false);
    const QByteArray format = reader.format();
    if (format.isEmpty() || isDrawing(format) || isCutOff(file, format) || !hasDecodableSize(reader.size()))
        return {};
    const QImage image = reader.read();
    return hasDecodableSize(image.size()) ? image.convertToFormat(QImage::Format_RGBA8888) : QImage();
}

}  // namespace

bool CTextureManager::TextureHelper(const std::wstring& path, const DecodedCallback& callback)
{
    try {
        const QImage image = decode(QString::fromStdWString(path));
        if (image.isNull() || !callback)
            return false;
        callback(image.width(), image.height(), image.constBits());
        return true;
    } catch (...) {
        // No memory for the picture, or the callback's own failure.
        return false;
    }
}

}  // namespace kiv
