#pragma once

#include <QImage>
#include <QOpenGLFramebufferObject>

#include <functional>
#include <memory>

namespace kiv {

/// The frame buffers that a picture is drawn into: several samples a pixel where the driver has them.
class CFrameTarget {
public:
    /// Calls `draw` with the frame buffer in use and reads the picture back. A context must be current. Null when the
    /// frame buffer cannot be made.
    QImage Draw(const QSize& size, const std::function<void()>& draw);
    /// With the context current, before it goes.
    void Release();

private:
    bool prepare(const QSize& size);

    std::unique_ptr<QOpenGLFramebufferObject> m_samples;
    std::unique_ptr<QOpenGLFramebufferObject> m_picture;
};

}  // namespace kiv
