#include "PreviewBodies.h"

#include <kiv/BodyBuilder.h>
#include <kiv/NurbsSurface.h>
#include <kiv/Sphere3D.h>
#include <kiv/TangentHelper.h>

namespace {

constexpr double CylinderRadius = 1.0;
constexpr double CylinderHeight = 1.6;
constexpr double SphereRadius = 0.1;
constexpr double SphereStep = 8.0;  // degrees
constexpr double BoxSide = 1.0;
constexpr int NetSide = 4;

// Lengths in metres. The bodies differ in size: a texture of one metre shows once on the box and several times around
// the cylinder.
kiv::CTriangleMesh cylinderMesh()
{
    const kiv::CBodyPtr body =
        kiv::GBodyBuilder(true, true)
            .CylinderBody({0, 0, -CylinderHeight / 2}, {0, 0, CylinderHeight / 2}, CylinderRadius);
    return kiv::CBodyTriangles(body.get()).GetMesh();
}

kiv::CTriangleMesh sphereMesh()
{
    kiv::CTriangleMesh mesh;
    kiv::CSphere3D::GetSphereData({}, SphereRadius, SphereStep, mesh.vertices, mesh.indices, mesh.normals,
                                  mesh.textureCoordinates);
    return mesh;
}

kiv::CTriangleMesh boxMesh()
{
    const kiv::CCuboidBody box({}, BoxSide, BoxSide, BoxSide);
    return kiv::CBodyTriangles(&box).GetMesh();
}

// A bicubic patch, gently waved, over the square from (1, 1) to (4, 4).
kiv::CTriangleMesh surfaceMesh()
{
    static const double heights[NetSide][NetSide] = {{1, 1, 2, 1}, {1, 2, 3, 2}, {2, 3, 2, 1}, {1, 2, 1, 1}};
    std::vector<kiv::CVec4<double>> points;
    for (int v = 0; v < NetSide; ++v) {
        for (int u = 0; u < NetSide; ++u)
            points.emplace_back(u + 1.0, v + 1.0, heights[v][u], 1.0);
    }
    const std::vector<double> knots{0, 0, 0, 0, 1, 1, 1, 1};
    kiv::CNurbsSurface surface;
    surface.SetControlPointCounts(NetSide, NetSide);
    surface.SetKnots(knots, knots);
    surface.SetControlPoints(std::move(points));
    kiv::CTriangleMesh mesh = kiv::CMeshParameter().SurfaceToMesh(surface);
    kiv::CMeshParameter::NormalizeSurfaceUV(mesh);
    return mesh;
}

struct Shape {
    const char* name;
    kiv::CTriangleMesh (*mesh)();
};

const Shape shapes[] = {{"Cylinder", cylinderMesh}, {"Sphere", sphereMesh}, {"Box", boxMesh}, {"Surface", surfaceMesh}};

}  // namespace

kiv::CPrimitiveRenderablePtr MakePreviewBody(const QString& shape)
{
    for (const Shape& known : shapes) {
        if (shape != QLatin1String(known.name))
            continue;
        const auto body = std::make_shared<kiv::CPrimitiveRenderable>(kiv::CPrimitiveRenderable::Triangles, 2);
        body->SetMesh(known.mesh());
        kiv::CTangentHelper::GenTangents(*body);
        return body;
    }
    return {};
}
