#include <kiv/Camera.h>

#include <algorithm>
#include <cmath>

namespace kiv {

namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr double SteepestPitch = Pi / 2 - 0.001;  // at the very top there is no "up" any more

struct CSide {
    double yaw;
    double pitch;
};

// By EnViewPoint. Yaw 0 looks along +y.
constexpr CSide Sides[] = {{-Pi / 5, Pi / 15}, {0, 0}, {Pi, 0}, {-Pi / 2, 0}, {Pi / 2, 0}, {0, SteepestPitch},
                           {0, -SteepestPitch}};

}  // namespace

void CCamera::SetType(int type, int synchronization)
{
    if (type != Perspective && type != Orthographic)
        return;
    // Both projections are fitted to the centre's plane, so what lies there keeps its size.
    if (synchronization == 0 && type != m_type)
        m_distance = m_radius / std::sin(FieldOfView / 2);
    m_type = type;
}

void CCamera::SetViewPoint(int viewPoint)
{
    if (viewPoint < ViewIsometric || viewPoint > ViewBottom)
        return;
    m_yaw = Sides[viewPoint].yaw;
    m_pitch = Sides[viewPoint].pitch;
}

void CCamera::Orbit(double yaw, double pitch)
{
    if (!std::isfinite(yaw) || !std::isfinite(pitch))
        return;
    m_yaw = std::remainder(m_yaw + yaw, 2 * Pi);
    m_pitch = std::clamp(m_pitch + pitch, -SteepestPitch, SteepestPitch);
}

void CCamera::Pan(double right, double up)
{
    if (!std::isfinite(right) || !std::isfinite(up))
        return;
    const double height = 2 * m_distance * std::tan(FieldOfView / 2);
    const CVec3<double> upward = GetUp();
    const CVec3<double> rightward{std::cos(m_yaw), std::sin(m_yaw), 0};
    for (std::size_t i = 0; i < 3; ++i)
        m_centre[i] += height * (right * rightward[i] + up * upward[i]);
}

void CCamera::Zoom(double factor)
{
    if (std::isfinite(factor) && factor > 0)
        m_distance = std::clamp(m_distance / factor, m_radius / 100, m_radius * 100);
}

void CCamera::Fit(const CVec3<double>& centre, double radius, double aspect)
{
    if (!std::isfinite(radius) || radius <= 0 || !std::isfinite(aspect) || aspect <= 0)
        return;
    const double half = std::atan(std::tan(FieldOfView / 2) * std::min(1.0, aspect));
    m_centre = centre;
    m_radius = radius;
    m_distance = radius / std::sin(half);
}

CVec3<double> CCamera::GetEye() const
{
    return {m_centre.x - m_distance * std::cos(m_pitch) * -std::sin(m_yaw),
            m_centre.y - m_distance * std::cos(m_pitch) * std::cos(m_yaw), m_centre.z + m_distance * std::sin(m_pitch)};
}

CVec3<double> CCamera::GetUp() const
{
    return {std::sin(m_pitch) * -std::sin(m_yaw), std::sin(m_pitch) * std::cos(m_yaw), std::cos(m_pitch)};
}

}  // namespace kiv
