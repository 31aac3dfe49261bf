#pragma once

#include <QImage>
#include <QPointer>
#include <QWidget>

namespace kiv {

class CWindowSurface;
class IPictureSource;

/// Shows a viewer's picture on top of the widget whose window the viewer was given. Lets the mouse through to it,
/// follows its size and goes with it. Asks for a new picture only while it is painted.
///
/// Where the platform has windows for OpenGL, one of them lies in this widget and shows the picture. Elsewhere, and
/// when the widget is painted into something else (QWidget::grab, QWidget::render), the widget paints it, read back
/// from OpenGL. The widget has a window of the platform in the first case, so that widgets which are put over the
/// picture get one too and stay above it; Qt::AA_DontCreateNativeWidgetSiblings would hide them.
class CViewerSurface : public QWidget {
public:
    /// `source` outlives this. Without OpenGL there is no window for it.
    CViewerSurface(QWidget& host, IPictureSource& source, bool hasOpenGL);
    ~CViewerSurface() override;

    /// The next painting draws anew.
    void SetDirty();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void letHostBePainted();
    void openWindow();
    void closeWindow();
    bool isPaintedElsewhere() const;

    IPictureSource& m_source;
    bool m_wantsWindow;
    QPointer<CWindowSurface> m_window;  // dies with the window that this widget has at the time
    QImage m_picture;
    bool m_dirty = true;
};

}  // namespace kiv
