#include <kiv/BodyBuilder.h>

#include "MeshWriter.h"

#include <vector>

namespace kiv {

namespace {

using Vector = CVec3<double>;

constexpr int Segments = 96;

class CCylinderBody : public CBody {
public:
    CCylinderBody(const Vector& base, const Vector& top, double radius, bool withCaps, bool realSize);

    void Triangulate(CTriangleMesh& mesh) const override;

private:
    void addSide(CMeshWriter& writer) const;
    void addCap(CMeshWriter& writer, double side) const;
    const Vector& centre(double side) const { return side > 0 ? m_top : m_base; }

    Vector m_base;
    Vector m_top;
    double m_radius;
    bool m_withCaps;
    bool m_realSize;
    double m_height;
    Vector m_axis;
    Vector m_right;  // with m_up and the axis a right-handed frame; upright cylinders have x, y and z
    Vector m_up;
    std::vector<Vector> m_circle;  // directions counter-clockwise from m_up, Segments of them
};

CCylinderBody::CCylinderBody(const Vector& base, const Vector& top, double radius, bool withCaps, bool realSize)
    : m_base(base), m_top(top), m_radius(radius), m_withCaps(withCaps), m_realSize(realSize),
      m_height(Length(top - base)), m_axis(Normalized(top - base))
{
    const bool isUpright = std::abs(m_axis.z) > 0.9;
    m_up = Normalized(Perpendicular(isUpright ? Vector(0, 1, 0) : Vector(0, 0, 1), m_axis));
    m_right = Cross(m_up, m_axis);
    for (int i = 0; i < Segments; ++i) {
        const double angle = 2 * Pi * i / Segments;
        m_circle.push_back(m_up * std::cos(angle) - m_right * std::sin(angle));
    }
}

// The seam has vertices on both sides of it, at exactly the same places.
void CCylinderBody::addSide(CMeshWriter& writer) const
{
    const double width = m_realSize ? 2 * Pi * m_radius : 1;
    const double height = m_realSize ? m_height : 1;
    for (int i = 0; i <= Segments; ++i) {
        const Vector& direction = m_circle[std::size_t(i % Segments)];
        const double u = width * i / Segments;
        const unsigned upper = writer.AddVertex(m_top + direction * m_radius, direction, {u, height});
        const unsigned lower = writer.AddVertex(m_base + direction * m_radius, direction, {u, 0});
        if (i > 0)
            writer.AddQuad(lower - 2, lower, upper, upper - 2);
    }
}

void CCylinderBody::addCap(CMeshWriter& writer, double side) const
{
    const double size = m_realSize ? 2 * m_radius : 1;
    const Vector right = m_right * side;
    const unsigned middle = writer.AddVertex(centre(side), m_axis * side, {size / 2, size / 2});
    for (const Vector& direction : m_circle) {
        const CVec2<double> place((1 + Dot(direction, right)) * size / 2, (1 + Dot(direction, m_up)) * size / 2);
        writer.AddVertex(centre(side) + direction * m_radius, m_axis * side, place);
    }
    for (unsigned i = 0; i < Segments; ++i) {
        const unsigned first = middle + 1 + i;
        const unsigned second = middle + 1 + (i + 1) % Segments;
        writer.AddTriangle(middle, side > 0 ? first : second, side > 0 ? second : first);
    }
}

void CCylinderBody::Triangulate(CTriangleMesh& mesh) const
{
    CMeshWriter writer(mesh);
    addSide(writer);
    if (m_withCaps) {
        addCap(writer, 1);
        addCap(writer, -1);
    }
}

}  // namespace

CBodyPtr GBodyBuilder::CylinderBody(const CVec3<double>& base, const CVec3<double>& top, double radius) const
{
    const bool isSolid = FitsFloat(base) && FitsFloat(top) && Length(top - base) > 0 && FitsFloat(radius) && radius > 0;
    return isSolid ? std::make_shared<CCylinderBody>(base, top, radius, m_withCaps, m_realSize) : nullptr;
}

}  // namespace kiv
