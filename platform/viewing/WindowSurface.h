#pragma once

#include <QWindow>

#include <functional>

namespace kiv {

class IPictureSource;

/// Shows pictures in a window of its own inside another, which OpenGL draws into without reading anything back. Lets
/// mouse and keys through to the window below. Draws when exposed, resized or dirty, at most once an event-loop pass,
/// and never while it cannot be seen. Belongs to the window that it lies in, and goes with it.
class CWindowSurface : public QWindow {
public:
    /// Whether such a window is known to show pictures and to let the mouse through here. Measured with X11; elsewhere
    /// a widget is the safe way.
    static bool IsSupported();

    /// `refused` is called at most once, from inside an event of this window, when OpenGL cannot draw into it.
    CWindowSurface(QWindow& below, IPictureSource& source, std::function<void()> refused);

    void SetDirty();
    /// Takes the size. The window system answers later, but draws no picture of the size before into the new one.
    void Fit(const QSize& size);

protected:
    bool event(QEvent* event) override;
    void exposeEvent(QExposeEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    bool canBeSeen() const;
    void draw();

    IPictureSource& m_source;
    QSize m_fitted;
    std::function<void()> m_refused;
};

}  // namespace kiv
