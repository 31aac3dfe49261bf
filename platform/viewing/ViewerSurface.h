#pragma once

#include <QImage>
#include <QPointer>
#include <QWidget>

#include <functional>

namespace kiv {

/// Shows a viewer's picture on top of the widget whose window the viewer was given. Lets the mouse through to it,
/// follows its size and goes with it. Asks for a new picture only while it is painted.
class CViewerSurface : public QWidget {
public:
    /// `draw` makes the picture of the size (device pixels).
    CViewerSurface(QWidget& host, std::function<QImage(const QSize&)> draw);

    /// The next painting draws anew.
    void SetDirty();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    std::function<QImage(const QSize&)> m_draw;
    QImage m_picture;
    bool m_dirty = true;
};

}  // namespace kiv
