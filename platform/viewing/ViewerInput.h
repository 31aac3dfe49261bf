#pragma once

#include <kiv/Camera.h>
#include <kiv/EventArgs.h>

namespace kiv {

/// Turns what the mouse does into movements of the camera.
class CViewerInput {
public:
    /// Whether the camera moved; `height` is the window's, in logical pixels. A double click goes to
    /// `home`, and leaves the projection.
    bool Process(const CMouseEventArgs& event, int height, CCamera& camera, const CCamera& home);

private:
    bool drag(const CMouseEventArgs& event, int height, CCamera& camera);

    int m_x = 0;
    int m_y = 0;
};

}  // namespace kiv
