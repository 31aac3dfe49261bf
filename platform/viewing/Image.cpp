#include <kiv/Image.h>

#include <kiv/TextureManager.h>

#include <QFileInfo>
#include <QImage>
#include <QImageWriter>
#include <QSaveFile>

namespace kiv {

namespace {

constexpr std::size_t BytesPerPixel = 4;

bool hasPixels(int width, int height)
{
    return width > 0 && height > 0 && static_cast<long long>(width) * height <= CTextureManager::MaxPixels;
}

// Empty for an ending that is not written.
QByteArray formatOf(const QString& path)
{
    const QString ending = QFileInfo(path).suffix().toLower();
    if (ending == QLatin1String("png") || ending == QLatin1String("bmp"))
        return ending.toLatin1();
    return ending == QLatin1String("jpg") || ending == QLatin1String("jpeg") ? "jpeg" : QByteArray();
}

}  // namespace

CImage::CImage(int width, int height)
{
    if (!hasPixels(width, height))
        return;
    m_width = width;
    m_height = height;
    m_pixels.resize(std::size_t(width) * std::size_t(height) * BytesPerPixel);
}

bool CImage::LoadFromFile(const std::wstring& path)
{
    return CTextureManager::TextureHelper(path, [this](int width, int height, const unsigned char* rgba) {
        m_pixels.assign(rgba, rgba + std::size_t(width) * std::size_t(height) * BytesPerPixel);
        m_width = width;
        m_height = height;
    });
}

bool CImage::SaveToFile(const std::wstring& path) const
{
    const QString name = QString::fromStdWString(path);
    const QByteArray format = formatOf(name);
    QSaveFile file(name);
    if (IsEmpty() || format.isEmpty() || !file.open(QIODevice::WriteOnly))
        return false;
    const QImage image(GetData(), m_width, m_height, m_width * int(BytesPerPixel), QImage::Format_RGBA8888);
    QImageWriter writer(&file, format);
    if (format == "jpeg")
        writer.setQuality(95);
    return writer.write(image) && file.flush() && file.commit();
}

}  // namespace kiv
