#pragma once

#include <kiv/TriangleMesh.h>

#include <memory>

namespace kiv {

/// A closed solid. Its surface is asked for as triangles by CBodyTriangles.
class CBody {
public:
    virtual ~CBody() = default;

    /// Appends the surface's triangles; seams and edges have vertices of their own, so that normals are sharp there.
    virtual void Triangulate(CTriangleMesh& mesh) const = 0;
};

using CBodyPtr = std::shared_ptr<const CBody>;

/// Makes bodies of revolution.
class GBodyBuilder {
public:
    /// `withCaps`: with the flat ends. `realSize`: texture coordinates in metres on the surface; otherwise 0..1.
    GBodyBuilder(bool withCaps, bool realSize) : m_withCaps(withCaps), m_realSize(realSize) {}

    /// A circular cylinder. Round the side, the first texture coordinate grows counter-clockwise seen from the top (to
    /// the right for who looks at it), the second along the axis. Null when the points are the same or a number is not
    /// finite or the radius not above 0.
    CBodyPtr CylinderBody(const CVec3<double>& base, const CVec3<double>& top, double radius) const;

private:
    bool m_withCaps;
    bool m_realSize;
};

/// A box with its edges along the axes, its centre at `centre`. On each side the texture coordinates are metres from
/// that side's lower left corner, for who looks at it from outside with z up (y up on top and bottom). A size that is
/// not above 0 or not finite counts as 0: the body then has no triangles.
class CCuboidBody : public CBody {
public:
    CCuboidBody(const CVec3<double>& centre, double sizeX, double sizeY, double sizeZ);

    void Triangulate(CTriangleMesh& mesh) const override;

private:
    CVec3<double> m_centre;
    CVec3<double> m_size;
};

/// A body's surface as triangles.
class CBodyTriangles {
public:
    /// Null gives no triangles.
    explicit CBodyTriangles(const CBody* body);

    const CTriangleMesh& GetMesh() const { return m_mesh; }

private:
    CTriangleMesh m_mesh;
};

}  // namespace kiv
