#include "FrameTarget.h"

#include <QOpenGLContext>
#include <QOpenGLFunctions>

namespace kiv {

bool CFrameTarget::prepare(const QSize& size)
{
    // After a lost context they are there, but no longer valid.
    if (m_picture && m_picture->size() == size && m_picture->isValid() && m_samples->isValid())
        return true;
    QOpenGLFramebufferObjectFormat format;
    format.setAttachment(QOpenGLFramebufferObject::CombinedDepthStencil);
    format.setSamples(m_wantedSamples);
    m_samples = std::make_unique<QOpenGLFramebufferObject>(size, format);
    m_picture = std::make_unique<QOpenGLFramebufferObject>(size);
    if (m_samples->isValid() && m_picture->isValid())
        return true;
    Release();
    return false;
}

bool CFrameTarget::Draw(const QSize& size, const std::function<void()>& draw)
{
    if (size.isEmpty() || !prepare(size))
        return false;
    m_samples->bind();
    QOpenGLFunctions& gl = *QOpenGLContext::currentContext()->functions();
    gl.glViewport(0, 0, size.width(), size.height());
    draw();
    QOpenGLFramebufferObject::blitFramebuffer(m_picture.get(), m_samples.get());
    m_samples->release();
    return true;
}

QImage CFrameTarget::ReadBack() const
{
    QImage picture = m_picture->toImage();
    picture.reinterpretAsFormat(QImage::Format_RGB32);
    return picture;
}

// Not from the samples: some drivers want one format on both sides to put samples together, and a surface has its own.
void CFrameTarget::CopyToSurface()
{
    QOpenGLFramebufferObject::blitFramebuffer(nullptr, m_picture.get());
}

void CFrameTarget::Release()
{
    m_samples.reset();
    m_picture.reset();
}

}  // namespace kiv
