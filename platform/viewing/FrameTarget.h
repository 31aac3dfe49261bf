#pragma once

#include <QImage>
#include <QOpenGLFramebufferObject>

#include <functional>
#include <memory>

namespace kiv {

/// The frame buffers that a picture is drawn into.
class CFrameTarget {
public:
    /// So many samples a pixel where the driver has them; with 0 edges are not smoothed.
    explicit CFrameTarget(int samples) : m_wantedSamples(samples) {}

    /// Calls `draw` with the frame buffer in use and reads the picture back. A context must be current. Null when the
    /// frame buffer cannot be made.
    QImage Draw(const QSize& size, const std::function<void()>& draw);
    /// With the context current, before it goes.
    void Release();

private:
    bool prepare(const QSize& size);

    int m_wantedSamples;
    std::unique_ptr<QOpenGLFramebufferObject> m_samples;
    std::unique_ptr<QOpenGLFramebufferObject> m_picture;
};

}  // namespace kiv
