#include "MaterialTest.h"

#include <kiv/BodyBuilder.h>
#include <kiv/Sphere3D.h>

#include <ClosedSurface.h>

#include <limits>

namespace {

using kiv::CTriangleMesh;

CTriangleMesh box(double x = 0)
{
    const kiv::CCuboidBody body({x, 0, 0}, 1, 1, 1);
    return kiv::CBodyTriangles(&body).GetMesh();
}

CTriangleMesh sphere()
{
    CTriangleMesh mesh;
    kiv::CSphere3D::GetSphereData({}, 0.1, 8.0, mesh.vertices, mesh.indices, mesh.normals, mesh.textureCoordinates);
    return mesh;
}

CTriangleMesh cylinder()
{
    const kiv::CBodyPtr body = kiv::GBodyBuilder(true, true).CylinderBody({}, {0, 0, 1}, 0.4);
    return kiv::CBodyTriangles(body.get()).GetMesh();
}

CTriangleMesh insideOut(CTriangleMesh mesh)
{
    for (std::size_t i = 0; i < mesh.indices.size(); i += 3)
        std::swap(mesh.indices[i], mesh.indices[i + 1]);
    return mesh;
}

CTriangleMesh open(CTriangleMesh mesh)
{
    mesh.indices.resize(mesh.indices.size() - 3);
    return mesh;
}

CTriangleMesh withoutNumber(CTriangleMesh mesh)
{
    mesh.vertices[0].x = std::numeric_limits<float>::quiet_NaN();
    return mesh;
}

CTriangleMesh both(CTriangleMesh a, const CTriangleMesh& b)
{
    for (const unsigned index : b.indices)
        a.indices.push_back(index + unsigned(a.vertices.size()));
    a.vertices.insert(a.vertices.end(), b.vertices.begin(), b.vertices.end());
    a.normals.insert(a.normals.end(), b.normals.begin(), b.normals.end());
    a.textureCoordinates.insert(a.textureCoordinates.end(), b.textureCoordinates.begin(), b.textureCoordinates.end());
    return a;
}

}  // namespace

Q_DECLARE_METATYPE(kiv::CTriangleMesh)

class TestClosedSurface : public MaterialTest {
    Q_OBJECT

private slots:
    void isKnown_data()
    {
        const auto row = testColumns<CTriangleMesh, bool>("mesh", "isClosed");
        row("box", box(), true);
        row("sphere, whose seam and poles have several corners at a place", sphere(), true);
        row("cylinder", cylinder(), true);
        row("two boxes that share a side", both(box(), box(1)), true);
        row("nothing", {}, false);
        row("a triangle is missing", open(sphere()), false);
        row("inside out", insideOut(box()), false);
        row("one of two inside out", both(box(), insideOut(box(3))), false);
        row("no number", withoutNumber(box()), false);
    }

    void isKnown()
    {
        QFETCH(CTriangleMesh, mesh);
        kiv::CPrimitiveRenderable renderable;
        renderable.SetMesh(mesh);
        QTEST(kiv::IsClosedSurface(renderable), "isClosed");
    }
};

MATERIAL_TEST_MAIN(TestClosedSurface)
#include "TestClosedSurface.moc"
