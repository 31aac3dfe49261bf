#include "PictureLoader.h"

#include <kiv/TextureManager.h>

#include <QRunnable>

namespace {

QImage loadCovering(const QString& file, const QSize& size)
{
    QImage picture;
    kiv::CTextureManager::TextureHelper(file.toStdWString(), [&](int width, int height, const unsigned char* rgba) {
        const QImage pixels(rgba, width, height, width * 4, QImage::Format_RGBA8888);
        // The conversion is also the copy that outlives the decoder's bytes.
        picture = pixels.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    });
    const bool isLarger = picture.width() > size.width() && picture.height() > size.height();
    return isLarger ? picture.scaled(size, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation) : picture;
}

}  // namespace

CPictureLoader::CPictureLoader(QObject* parent) : QObject(parent)
{
    m_pool.setMaxThreadCount(1);
}

CPictureLoader::~CPictureLoader()
{
    m_pool.clear();
    m_pool.waitForDone();
}

void CPictureLoader::Load(const QString& file, const QSize& size)
{
    m_pool.clear();
    m_pool.start(QRunnable::create([this, file, size] { emit Loaded(file, loadCovering(file, size)); }));
}
