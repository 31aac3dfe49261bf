#pragma once

#include <QImage>
#include <QOpenGLFramebufferObject>

#include <functional>
#include <memory>

namespace kiv {

/// The frame buffers that a picture is drawn into. A context must be current for everything here.
class CFrameTarget {
public:
    /// So many samples a pixel where the driver has them; with 0 edges are not smoothed.
    explicit CFrameTarget(int samples) : m_wantedSamples(samples) {}

    /// Calls `draw` with the frame buffer in use. False when the frame buffer cannot be made.
    bool Draw(const QSize& size, const std::function<void()>& draw);
    /// What was drawn.
    QImage ReadBack() const;
    /// Puts what was drawn into the surface that is current, which has the same size.
    void CopyToSurface();
    /// Before the context goes.
    void Release();

private:
    bool prepare(const QSize& size);

    int m_wantedSamples;
    std::unique_ptr<QOpenGLFramebufferObject> m_samples;
    std::unique_ptr<QOpenGLFramebufferObject> m_picture;
};

}  // namespace kiv
