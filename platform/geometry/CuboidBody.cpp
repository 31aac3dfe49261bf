#include <kiv/BodyBuilder.h>

#include "MeshWriter.h"

namespace kiv {

namespace {

using Vector = CVec3<double>;

double sizeOrZero(double size)
{
    return size > 0 && FitsFloat(size) ? size : 0;
}

Vector scaled(const Vector& a, const Vector& factors)
{
    return {a.x * factors.x, a.y * factors.y, a.z * factors.z};
}

// The side that `outward` points to, for who has `up` above.
void addSide(CMeshWriter& writer, const Vector& centre, const Vector& size, const Vector& outward, const Vector& up)
{
    const Vector right = Cross(up, outward);
    const double width = std::abs(Dot(right, size));
    const double height = std::abs(Dot(up, size));
    const auto corner = [&](double x, double y) {
        const Vector half = (outward + right * (2 * x - 1) + up * (2 * y - 1)) * 0.5;
        return writer.AddVertex(centre + scaled(half, size), outward, {x * width, y * height});
    };
    const unsigned first = corner(0, 0);
    corner(1, 0);
    corner(1, 1);
    corner(0, 1);
    writer.AddQuad(first, first + 1, first + 2, first + 3);
}

}  // namespace

CCuboidBody::CCuboidBody(const CVec3<double>& centre, double sizeX, double sizeY, double sizeZ)
    : m_centre(centre), m_size(sizeOrZero(sizeX), sizeOrZero(sizeY), sizeOrZero(sizeZ))
{
}

void CCuboidBody::Triangulate(CTriangleMesh& mesh) const
{
    if (m_size.x == 0 || m_size.y == 0 || m_size.z == 0 || !FitsFloat(m_centre))
        return;
    CMeshWriter writer(mesh);
    for (const double side : {1., -1.}) {
        addSide(writer, m_centre, m_size, {side, 0, 0}, {0, 0, 1});
        addSide(writer, m_centre, m_size, {0, side, 0}, {0, 0, 1});
        addSide(writer, m_centre, m_size, {0, 0, side}, {0, 1, 0});
    }
}

}  // namespace kiv
