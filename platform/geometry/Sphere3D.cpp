#include <kiv/Sphere3D.h>

#include "MeshWriter.h"

#include <algorithm>

namespace kiv {

namespace {

constexpr double FinestStep = 0.25;  // degrees; a million vertices

int divisions(double degrees, double step, int atLeast)
{
    // Without the allowance, rounding makes one more than 360 / 7.2.
    const double count = std::ceil(degrees / std::max(step, FinestStep) - 1e-9);
    return std::max(atLeast, int(count));
}

// Unit sphere; `ring` from the lower pole, `column` from the back to the right for who looks at it. The places of a
// pole and of both sides of the seam are exactly the same.
class CSphereGrid {
public:
    CSphereGrid(int columns, int rings) : m_columns(columns), m_rings(rings) {}

    CVec3<double> Direction(int column, int ring) const
    {
        if (ring == 0 || ring == m_rings)
            return {0, 0, ring == 0 ? -1. : 1.};
        const double longitude = 2 * Pi * (column == m_columns ? 0 : column) / m_columns;
        const double polar = Pi * ring / m_rings;
        return {-std::sin(polar) * std::sin(longitude), std::sin(polar) * std::cos(longitude), -std::cos(polar)};
    }

    // A triangle at a pole has a vertex of its own there, in the middle of its column.
    CVec2<double> Texture(int column, int ring) const
    {
        const double middle = ring == 0 || ring == m_rings ? 0.5 : 0;
        return {2 * (column + middle) / m_columns, double(ring) / m_rings};
    }

    void Write(CMeshWriter& writer, const CVec3<double>& centre, double radius) const
    {
        for (int ring = 0; ring <= m_rings; ++ring) {
            for (int column = 0; column <= m_columns; ++column) {
                const CVec3<double> direction = Direction(column, ring);
                writer.AddVertex(centre + direction * radius, direction, Texture(column, ring));
            }
        }
        for (int ring = 0; ring < m_rings; ++ring) {
            for (int column = 0; column < m_columns; ++column)
                WriteTriangles(writer, column, ring);
        }
    }

private:
    void WriteTriangles(CMeshWriter& writer, int column, int ring) const
    {
        const unsigned lower = unsigned(ring * (m_columns + 1) + column);
        const unsigned upper = lower + unsigned(m_columns) + 1;
        if (ring > 0)
            writer.AddTriangle(lower, lower + 1, ring + 1 < m_rings ? upper + 1 : upper);
        if (ring + 1 < m_rings)
            writer.AddTriangle(lower, upper + 1, upper);
    }

    int m_columns;
    int m_rings;
};

}  // namespace

void CSphere3D::GetSphereData(const CVec3<double>& centre, double radius, double stepDegrees,
                              std::vector<CVec3<float>>& vertices, std::vector<unsigned>& indices,
                              std::vector<CVec3<float>>& normals, std::vector<CVec2<float>>& textureCoordinates)
{
    CTriangleMesh mesh;
    if (FitsFloat(centre) && FitsFloat(radius) && radius > 0 && FitsFloat(stepDegrees) && stepDegrees > 0) {
        CMeshWriter writer(mesh);
        CSphereGrid(divisions(360, stepDegrees, 3), divisions(180, stepDegrees, 2)).Write(writer, centre, radius);
    }
    vertices = std::move(mesh.vertices);
    indices = std::move(mesh.indices);
    normals = std::move(mesh.normals);
    textureCoordinates = std::move(mesh.textureCoordinates);
}

}  // namespace kiv
