#pragma once

#include <kiv/Vector.h>

namespace kiv {

/// Looks at the rotation centre from a distance. Angles in radians; z is up.
class CCamera {
public:
    enum EnType { Perspective = 0, Orthographic = 1 };
    enum EnViewPoint {
        ViewIsometric = 0,
        ViewFront = 1,
        ViewBack = 2,
        ViewLeft = 3,
        ViewRight = 4,
        ViewTop = 5,
        ViewBottom = 6
    };

    /// `synchronization`: 0 leaves what is shown to the new projection, 1 keeps what lies at the rotation centre as
    /// large as it is.
    void SetType(int type, int synchronization);
    int GetType() const { return m_type; }

    /// Looks from a side of the scene; the distance stays. An unknown number does nothing.
    void SetViewPoint(int viewPoint);
    /// Turns around the centre: `yaw` about the vertical, `pitch` up; never over the top.
    void Orbit(double yaw, double pitch);
    /// Moves the centre in the picture's plane, in fractions of the picture's height.
    void Pan(double right, double up);
    /// Comes nearer (above 1) or goes away (below), between a hundredth and a hundred times the size fitted last.
    void Zoom(double factor);
    /// Shows a sphere whole, at the given width over height.
    void Fit(const CVec3<double>& centre, double radius, double aspect);

    CVec3<double> GetCentre() const { return m_centre; }
    CVec3<double> GetEye() const;
    CVec3<double> GetUp() const;
    double GetDistance() const { return m_distance; }
    double GetFittedRadius() const { return m_radius; }
    static constexpr double FieldOfView = 0.61;  ///< vertical, of the perspective camera

    double GetYaw() const { return m_yaw; }
    double GetPitch() const { return m_pitch; }

private:
    int m_type = Perspective;
    CVec3<double> m_centre;
    double m_yaw = 0;
    double m_pitch = 0;
    double m_distance = 4;
    double m_radius = 1;
};

}  // namespace kiv
