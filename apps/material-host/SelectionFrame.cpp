#include "SelectionFrame.h"

#include <kiv/VectorMath.h>

#include <array>

using Vec3 = kiv::CVec3<float>;

namespace {

constexpr int Sides = 4;

/// The corners of a rod's section, around its axis.
std::array<Vec3, Sides> section(const Vec3& axis, float thickness)
{
    const Vec3 other = std::abs(axis.z) < 0.9F ? Vec3(0, 0, 1) : Vec3(0, 1, 0);
    const Vec3 u = kiv::Normalized(kiv::Cross(axis, other)) * (thickness / 2);
    const Vec3 v = kiv::Normalized(kiv::Cross(axis, u)) * (thickness / 2);
    return {u + v, v - u, Vec3() - u - v, u - v};
}

void addRod(kiv::CTriangleMesh& mesh, const BuildingMesh::Edge& edge, float thickness)
{
    const Vec3 along = edge.to - edge.from;
    if (!(kiv::Length(along) > 0))
        return;
    const Vec3 axis = kiv::Normalized(along);
    const Vec3 cap = axis * (thickness / 2);
    const unsigned first = unsigned(mesh.vertices.size());
    for (const Vec3& corner : section(axis, thickness)) {
        mesh.vertices.push_back(edge.from - cap + corner);
        mesh.vertices.push_back(edge.to + cap + corner);
    }
    for (unsigned i = 0; i < Sides; ++i) {
        const unsigned a = first + 2 * i;
        const unsigned b = first + 2 * ((i + 1) % Sides);
        for (const unsigned index : {a, a + 1, b + 1, a, b + 1, b})
            mesh.indices.push_back(index);
    }
    for (const unsigned index : {0U, 2U, 4U, 0U, 4U, 6U, 1U, 5U, 3U, 1U, 7U, 5U})
        mesh.indices.push_back(first + index);
}

}  // namespace

kiv::CPrimitiveRenderablePtr SelectionFrame::make(const std::vector<BuildingMesh::Edge>& edges, double thickness)
{
    kiv::CTriangleMesh mesh;
    for (const BuildingMesh::Edge& edge : edges)
        addRod(mesh, edge, float(thickness));
    if (mesh.indices.empty())
        return {};
    // Nothing lights or covers the rods, but the arrays have to be there.
    mesh.normals.assign(mesh.vertices.size(), Vec3(0, -1, 0));
    mesh.textureCoordinates.assign(mesh.vertices.size(), {});
    auto rods = std::make_shared<kiv::CPrimitiveRenderable>();
    rods->SetMesh(mesh);
    return rods;
}

GRefPtr<kiv::CStateSet> SelectionFrame::stateSet()
{
    GRefPtr<kiv::CStateSet> stateSet(new kiv::CStateSet);
    stateSet->SetShading(kiv::EnShading::Unshaded);
    stateSet->SetUniform("baseColor", kiv::CVec4<float>(0, 0.47F, 0.84F, 1));
    return stateSet;
}
