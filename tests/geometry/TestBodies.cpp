#include "MaterialTest.h"

#include <kiv/BodyBuilder.h>
#include <kiv/Sphere3D.h>
#include <kiv/VectorMath.h>

#include <array>
#include <limits>
#include <map>

using kiv::CTriangleMesh;
using Vector = kiv::CVec3<double>;

Q_DECLARE_METATYPE(CTriangleMesh)
Q_DECLARE_METATYPE(Vector)

namespace {

constexpr double Pi = 3.14159265358979323846;
const double NoNumber = std::numeric_limits<double>::quiet_NaN();

CTriangleMesh cylinder(const Vector& base, const Vector& top, double radius, bool withCaps = true, bool realSize = true)
{
    return kiv::CBodyTriangles(kiv::GBodyBuilder(withCaps, realSize).CylinderBody(base, top, radius).get()).GetMesh();
}

CTriangleMesh box(const Vector& centre, double x, double y, double z)
{
    const kiv::CCuboidBody body(centre, x, y, z);
    return kiv::CBodyTriangles(&body).GetMesh();
}

CTriangleMesh sphere(const Vector& centre, double radius, double step)
{
    CTriangleMesh mesh;
    kiv::CSphere3D::GetSphereData(centre, radius, step, mesh.vertices, mesh.indices, mesh.normals,
                                  mesh.textureCoordinates);
    return mesh;
}

Vector vertex(const CTriangleMesh& mesh, std::size_t corner)
{
    return kiv::VectorCast<double>(mesh.vertices.at(mesh.indices[corner]));
}

Vector normal(const CTriangleMesh& mesh, std::size_t corner)
{
    return kiv::VectorCast<double>(mesh.normals.at(mesh.indices[corner]));
}

// Twice the triangle's area long, outwards for corners that go round counter-clockwise.
Vector across(const CTriangleMesh& mesh, std::size_t first)
{
    const Vector start = vertex(mesh, first);
    return kiv::Cross(vertex(mesh, first + 1) - start, vertex(mesh, first + 2) - start);
}

// By the divergence theorem; negative when the triangles are inside out.
double volume(const CTriangleMesh& mesh)
{
    double sum = 0;
    for (std::size_t i = 0; i < mesh.indices.size(); i += 3)
        sum += kiv::Dot(vertex(mesh, i) - vertex(mesh, 0), across(mesh, i)) / 6;
    return sum;
}

using Place = std::array<float, 3>;

Place place(const CTriangleMesh& mesh, std::size_t corner)
{
    const kiv::CVec3<float>& at = mesh.vertices[mesh.indices[corner]];
    return {at.x, at.y, at.z};
}

// Edges between places that are not passed exactly once in each direction.
int openEdges(const CTriangleMesh& mesh)
{
    std::map<std::pair<Place, Place>, int> passed;
    for (std::size_t i = 0; i < mesh.indices.size(); ++i)
        ++passed[{place(mesh, i), place(mesh, i % 3 == 2 ? i - 2 : i + 1)}];
    int open = 0;
    for (const auto& [edge, count] : passed) {
        const auto back = passed.find({edge.second, edge.first});
        open += count != 1 || back == passed.end();
    }
    return open;
}

}  // namespace

/// The solids of the preview, as triangles.
class TestBodies : public MaterialTest {
    Q_OBJECT

private slots:
    void isAClosedSolid_data()
    {
        const auto row = testColumns<CTriangleMesh, double, double, double>("mesh", "expected", "tolerance", "slant");
        row("box", box({5, -2, 1}, 1, 2, 3), 6., 1e-6, 0.9999);
        row("upright cylinder", cylinder({0, 0, -1}, {0, 0, 1}, 1), 2 * Pi, 2e-3, 0.999);
        row("hanging cylinder", cylinder({0, 0, 3}, {0, 0, -1}, 0.5, true, false), Pi, 2e-3, 0.999);
        row("lying cylinder", cylinder({1, 1, 1}, {4, 5, 1}, 0.1), 0.05 * Pi, 2e-3, 0.999);
        row("sphere", sphere({0, 0, 0}, 0.1, 8), 4e-3 * Pi / 3, 2e-2, 0.99);
        row("fine sphere", sphere({7, 8, 9}, 2, 2.1), 32 * Pi / 3, 2e-3, 0.999);
        row("coarsest sphere", sphere({0, 0, 0}, 1, 1e9), std::sqrt(3.) / 2, 1e-6, 0.4);
    }

    void isAClosedSolid()
    {
        QFETCH(CTriangleMesh, mesh);
        QFETCH(double, expected);
        QFETCH(double, tolerance);  // of the volume; a round body lies within its triangles' corners
        QFETCH(double, slant);      // cosine between a corner's normal and its triangle's, at least
        QCOMPARE(mesh.normals.size(), mesh.vertices.size());
        QCOMPARE(mesh.textureCoordinates.size(), mesh.vertices.size());
        QVERIFY(!mesh.indices.empty());
        QCOMPARE(openEdges(mesh), 0);
        QVERIFY2(std::abs(volume(mesh) / expected - 1) < tolerance, qPrintable(QString::number(volume(mesh))));
        for (std::size_t i = 0; i < mesh.indices.size(); ++i) {
            QVERIFY(std::abs(kiv::Length(normal(mesh, i)) - 1) < 1e-6);
            QVERIFY(kiv::Dot(normal(mesh, i), kiv::Normalized(across(mesh, i / 3 * 3))) > slant);
        }
    }

    // A metre on the surface is 1 in texture coordinates, along every edge and not mirrored.
    void texturesHaveTheirRealSize()
    {
        for (const CTriangleMesh& mesh : {box({5, -2, 1}, 1, 2, 3), cylinder({1, 1, 1}, {4, 5, 1}, 0.7)}) {
            for (std::size_t i = 0; i < mesh.indices.size(); i += 3) {
                const auto texture = [&](std::size_t corner) {
                    const kiv::CVec2<float>& at = mesh.textureCoordinates[mesh.indices[i + corner]];
                    return Vector(double(at.x), double(at.y), 0);
                };
                const Vector step1 = texture(1) - texture(0), step2 = texture(2) - texture(0);
                const double length1 = kiv::Length(vertex(mesh, i + 1) - vertex(mesh, i));
                const double length2 = kiv::Length(vertex(mesh, i + 2) - vertex(mesh, i));
                QVERIFY(std::abs(kiv::Length(step1) / length1 - 1) < 1e-3);
                QVERIFY(std::abs(kiv::Length(step2) / length2 - 1) < 1e-3);
                QVERIFY(std::abs(kiv::Cross(step1, step2).z / kiv::Length(across(mesh, i)) - 1) < 1e-3);
            }
        }
    }

    // Where the box's sides and the cylinder's ends have their lower left corner, for who looks at them.
    void texturesReadFromLeftToRight()
    {
        const std::map<std::array<int, 3>, Vector> corners = {{{1, 0, 0}, {1, -1, -1}}, {{-1, 0, 0}, {-1, 1, -1}},
                                                              {{0, 1, 0}, {1, 1, -1}},  {{0, -1, 0}, {-1, -1, -1}},
                                                              {{0, 0, 1}, {-1, -1, 1}}, {{0, 0, -1}, {1, -1, -1}}};
        const CTriangleMesh mesh = box({0, 0, 0}, 2, 2, 2);
        int found = 0;
        for (std::size_t i = 0; i < mesh.vertices.size(); ++i) {
            if (mesh.textureCoordinates[i] != kiv::CVec2<float>(0, 0))
                continue;
            const kiv::CVec3<float>& side = mesh.normals[i];
            QVERIFY(kiv::VectorCast<double>(mesh.vertices[i]) == corners.at({int(side.x), int(side.y), int(side.z)}));
            ++found;
        }
        QCOMPARE(found, 6);
    }

    void theSphereIsRoundAndWrapsTwice()
    {
        const Vector centre(1, 2, 3);
        const CTriangleMesh mesh = sphere(centre, 0.5, 7.2);
        QCOMPARE(mesh.indices.size() / 3, std::size_t(50 * 2 * 24));
        float mostU = 0;
        for (std::size_t i = 0; i < mesh.vertices.size(); ++i) {
            const Vector outward = kiv::VectorCast<double>(mesh.vertices[i]) - centre;
            QVERIFY(std::abs(kiv::Length(outward) - 0.5) < 1e-6);
            QVERIFY(kiv::Length(kiv::Normalized(outward) - kiv::VectorCast<double>(mesh.normals[i])) < 1e-5);
            const double polar = std::asin(std::clamp(outward.z / 0.5, -1., 1.)) / Pi + 0.5;
            QVERIFY(std::abs(polar - double(mesh.textureCoordinates[i].y)) < 1e-3);
            mostU = std::max(mostU, i % 51 < 50 ? 0 : mesh.textureCoordinates[i].x);
        }
        QVERIFY(std::abs(mostU - 2) < 0.03f);  // the poles' lie in the middle of the column after
    }

    void givesNothingForNoBody()
    {
        const Vector low(0, 0, 0), high(0, 0, 1);
        QVERIFY(cylinder(low, low, 1).indices.empty());
        QVERIFY(cylinder(low, high, 0).indices.empty());
        QVERIFY(cylinder(low, high, NoNumber).indices.empty());
        QVERIFY(cylinder(low, {0, NoNumber, 1}, 1).indices.empty());
        QVERIFY(openEdges(cylinder(low, high, 1, false)) > 0);
        QVERIFY(box(low, 1, -1, 1).indices.empty());
        QVERIFY(box({NoNumber, 0, 0}, 1, 1, 1).indices.empty());
        QVERIFY(box(low, 1, 1, 1e300).indices.empty());
        QVERIFY(sphere(low, -1, 8).vertices.empty());
        QVERIFY(sphere(low, 1, 0).vertices.empty());
        QVERIFY(sphere(low, NoNumber, 8).vertices.empty());
        QVERIFY(sphere(low, 1, 1e-300).vertices.size() < 2000000);
    }
};

MATERIAL_TEST_MAIN(TestBodies)
#include "TestBodies.moc"
