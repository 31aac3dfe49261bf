#include "TextureCache.h"

#include <kiv/TextureManager.h>

#include <QDateTime>
#include <QFileInfo>

namespace {

constexpr int MaxKilobytes = 96 * 1024;
constexpr int TellMs = 120;  // drawing everything for each of many pictures would take longer than decoding them

QImage decoded(const QString& path)
{
    QImage image;
    kiv::CTextureManager::TextureHelper(path.toStdWString(), [&](int width, int height, const unsigned char* rgba) {
        image = QImage(rgba, width, height, width * 4, QImage::Format_RGBA8888)
                    .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    });
    return image;
}

QImage reduced(const QImage& image, const QSize& size)
{
    const QSize target = size.boundedTo(image.size()).expandedTo({1, 1});
    return image.scaled(target, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QString keyOf(const QString& path, const QSize& size)
{
    const qint64 changed = QFileInfo(path).lastModified().toMSecsSinceEpoch();
    return QString("%1|%2|%3x%4").arg(path).arg(changed).arg(size.width()).arg(size.height());
}

}  // namespace

TextureCache::TextureCache(QObject* parent) : QObject(parent), m_tiles(MaxKilobytes)
{
    m_pool.setMaxThreadCount(2);
    m_told.start();
}

TextureCache::~TextureCache()
{
    m_pool.clear();
    m_pool.waitForDone();
}

QImage TextureCache::tile(const QString& path, const QSize& size)
{
    const QString key = keyOf(path, size);
    if (const QImage* exact = m_tiles.object(key))
        return *exact;
    if (!m_pending.contains(key) && !m_failed.contains(key))
        start(key, path, size);
    const QImage* other = m_tiles.object(m_latest.value(path));
    return other ? *other : QImage();
}

void TextureCache::start(const QString& key, const QString& path, const QSize& size)
{
    m_pending.insert(key);
    m_pool.start([this, key, path, size] {
        const QImage whole = decoded(path);
        const QImage image = whole.isNull() ? whole : reduced(whole, size);
        QMetaObject::invokeMethod(
            this, [this, key, path, image] { finish(key, path, image); }, Qt::QueuedConnection);
    });
}

void TextureCache::finish(const QString& key, const QString& path, const QImage& image)
{
    m_pending.remove(key);
    if (image.isNull()) {
        m_failed.insert(key);
    } else {
        m_tiles.insert(key, new QImage(image), int(image.sizeInBytes() / 1024) + 1);
        m_latest.insert(path, key);
    }
    if (!isIdle() && m_told.elapsed() < TellMs)
        return;
    m_told.start();
    emit arrived();
}
