#pragma once

#include <QImage>

class QWindow;

namespace kiv {

/// Makes the pictures that a surface shows.
class IPictureSource {
public:
    virtual ~IPictureSource() = default;

    /// A picture of the size (device pixels), with the plain background where OpenGL cannot draw. Null when a side of
    /// it is too short or too long.
    virtual QImage DrawImage(const QSize& size) = 0;
    /// Draws right into the window, which is exposed, and shows it there. The size (device pixels) is the one that was
    /// asked for, which the window itself may not know yet. False when OpenGL cannot draw into it.
    virtual bool DrawWindow(QWindow& window, const QSize& size) = 0;
};

}  // namespace kiv
