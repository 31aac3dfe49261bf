#include "ViewerInput.h"

#include <Qt>

#include <algorithm>
#include <cmath>

namespace kiv {

namespace {

constexpr double RadiansPerPixel = 0.01;
constexpr double ZoomPerEighth = 1.0012;  // a notch of the wheel, 120, is about a seventh

}  // namespace

bool CViewerInput::Process(const CMouseEventArgs& event, int height, CCamera& camera, const CCamera& home)
{
    bool moved = false;
    if (event.type == MouseWheelEvent) {
        camera.Zoom(std::pow(ZoomPerEighth, std::clamp(event.delta, -1200, 1200)));
        moved = event.delta != 0;
    } else if (event.type == MouseDoubleClickEvent && (event.buttons & Qt::LeftButton)) {
        const int type = camera.GetType();
        camera = home;
        camera.SetType(type, 1);
        moved = true;
    } else if (event.type == MouseMoveEvent) {
        moved = drag(event, std::max(1, height), camera);
    }
    m_x = event.x;
    m_y = event.y;
    return moved;
}

bool CViewerInput::drag(const CMouseEventArgs& event, int height, CCamera& camera)
{
    const int right = event.x - m_x;
    const int down = event.y - m_y;
    const bool isLeft = (event.buttons & Qt::LeftButton) != 0;
    const bool pans = (event.buttons & Qt::MiddleButton) || (isLeft && (event.modifiers & Qt::ShiftModifier));
    if (pans)
        camera.Pan(-double(right) / height, double(down) / height);
    else if (isLeft)
        camera.Orbit(-right * RadiansPerPixel, down * RadiansPerPixel);
    return pans || isLeft;
}

}  // namespace kiv
