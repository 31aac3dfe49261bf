#include <kiv/NurbsSurface.h>

#include "MeshWriter.h"

#include <algorithm>

namespace kiv {

namespace {

constexpr int MostSteps = 1024;

// Exact at both ends.
double between(const CVec2<double>& range, int step, int steps)
{
    return step == steps ? range.y : range.x + (range.y - range.x) * step / steps;
}

void addVertices(CMeshWriter& writer, const CNurbsSurface& surface, int stepsU, int stepsV)
{
    for (int j = 0; j <= stepsV; ++j) {
        for (int i = 0; i <= stepsU; ++i) {
            const double u = between(surface.GetRangeU(), i, stepsU);
            const double v = between(surface.GetRangeV(), j, stepsV);
            CVec3<double> normal;
            const CVec3<double> point = surface.Evaluate(u, v, &normal);
            writer.AddVertex(point, normal, {u, v});
        }
    }
}

void normalize(std::vector<CVec2<float>>& coordinates, std::size_t axis)
{
    const auto isLess = [axis](const CVec2<float>& a, const CVec2<float>& b) { return a[axis] < b[axis]; };
    const auto [lowest, highest] = std::minmax_element(coordinates.begin(), coordinates.end(), isLess);
    const float start = (*lowest)[axis];
    const float size = (*highest)[axis] - start;
    for (CVec2<float>& coordinate : coordinates)
        coordinate[axis] = size > 0 ? (coordinate[axis] - start) / size : 0;
}

}  // namespace

CTriangleMesh CMeshParameter::SurfaceToMesh(const CNurbsSurface& surface) const
{
    CTriangleMesh mesh;
    if (!surface.IsValid())
        return mesh;
    const int stepsU = std::clamp(m_stepsU, 1, MostSteps);
    const int stepsV = std::clamp(m_stepsV, 1, MostSteps);
    CMeshWriter writer(mesh);
    addVertices(writer, surface, stepsU, stepsV);
    for (int j = 0; j < stepsV; ++j) {
        for (int i = 0; i < stepsU; ++i) {
            const unsigned lower = unsigned(j * (stepsU + 1) + i);
            const unsigned upper = lower + unsigned(stepsU) + 1;
            writer.AddQuad(lower, lower + 1, upper + 1, upper);
        }
    }
    return mesh;
}

void CMeshParameter::NormalizeSurfaceUV(CTriangleMesh& mesh)
{
    if (mesh.textureCoordinates.empty())
        return;
    normalize(mesh.textureCoordinates, 0);
    normalize(mesh.textureCoordinates, 1);
}

}  // namespace kiv
