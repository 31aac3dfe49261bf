#include <kiv/TextureManager.h>

#include "gl/RenderDevice.h"

#include <kiv/system/StoredPath.h>

#include <QFile>
#include <QImageReader>
#include <QtEndian>

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

// Whole files end with an end marker after their last start of scan, here looked for with room for what some programs
// append.
bool isJpegCutOff(QFile& file)
{
    constexpr qint64 tailSize = 64 * 1024;
    file.seek(qMax<qint64>(0, file.size() - tailSize));
    const QByteArray tail = file.read(tailSize);
    return tail.lastIndexOf("\xff\xd9") <= tail.lastIndexOf("\xff\xda");
}

// The rows of an uncompressed picture stand in the file as they are, padded to four bytes.
bool isBmpCutOff(QFile& file)
{
    file.seek(0);
    const QByteArray header = file.read(34);
    if (header.size() < 34)
        return true;
    const auto number = [&](int place) { return qFromLittleEndian<qint32>(header.constData() + place); };
    const qint32 compression = number(30);
    const bool hasPlainRows = number(14) >= 40 && (compression == 0 || compression == 3);
    const qint64 bitsPerPixel = qFromLittleEndian<quint16>(header.constData() + 28);
    const qint64 rowBytes = (number(18) * bitsPerPixel + 31) / 32 * 4;
    return hasPlainRows && quint32(number(10)) + rowBytes * qAbs(qint64(number(22))) > file.size();
}

// The decoders of these fill what is missing with grey or with nothing at all, and call it a success.
bool isCutOff(QFile& file, const QByteArray& format)
{
    const qint64 place = file.pos();
    const bool cutOff = format == "jpeg" ? isJpegCutOff(file) : format == "bmp" && isBmpCutOff(file);
    file.seek(place);
    return cutOff;
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
    if (format.isEmpty() || isDrawing(format) || !hasDecodableSize(reader.size()) || isCutOff(file, format))
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

void CTextureManager::ReleaseTextures()
{
    const auto device = CRenderDevice::Existing();
    if (!device || !device->IsCapable())
        return;
    const CRenderDevice::CCurrent current(*device);
    if (!current)
        return;  // nothing can be deleted now, and what is forgotten would never be
    device->GetTextures().Release();
    device->GetSkies().Release();
}

}  // namespace kiv
