#include "MaterialTest.h"

#include <kiv/NurbsSurface.h>
#include <kiv/VectorMath.h>

#include <limits>

using kiv::CNurbsSurface;
using Vector = kiv::CVec3<double>;
using Points = std::vector<kiv::CVec4<double>>;

Q_DECLARE_METATYPE(CNurbsSurface)

namespace {

CNurbsSurface surface(int countU, int countV, std::vector<double> knotsU, std::vector<double> knotsV, Points points)
{
    CNurbsSurface result;
    result.SetControlPointCounts(countU, countV);
    result.SetKnots(std::move(knotsU), std::move(knotsV));
    result.SetControlPoints(std::move(points));
    return result;
}

// Cubic and quadratic, with knots at uneven places and uneven weights.
CNurbsSurface hill()
{
    Points points;
    for (int v = 0; v < 4; ++v) {
        for (int u = 0; u < 6; ++u)
            points.emplace_back(u + 0.1 * v, v / 3., std::sin(1.7 * u) * std::cos(2.3 * v), 0.7 + 0.3 * ((u + v) % 3));
    }
    return surface(6, 4, {-0.3, -0.3, -0.3, -0.3, 0.1, 0.7, 2.1, 2.1, 2.1, 2.1}, {0, 0, 0, 1.5, 4.9, 4.9, 4.9}, points);
}

// A quarter of a cylinder of radius 2 round the z axis, from x to y, 3 high.
CNurbsSurface quarter()
{
    const double weight = std::sqrt(0.5);
    return surface(3, 2, {0, 0, 0, 1, 1, 1}, {0, 0, 1, 1},
                   {{2, 0, 0, 1}, {2, 2, 0, weight}, {0, 2, 0, 1}, {2, 0, 3, 1}, {2, 2, 3, weight}, {0, 2, 3, 1}});
}

// An eighth of the unit ball's surface; the second row ends in the pole.
CNurbsSurface octant()
{
    const double w = std::sqrt(0.5);
    return surface(3, 3, {0, 0, 0, 1, 1, 1}, {0, 0, 0, 1, 1, 1},
                   {{1, 0, 0, 1},
                    {1, 1, 0, w},
                    {0, 1, 0, 1},  //
                    {1, 0, 1, w},
                    {1, 1, 1, w * w},
                    {0, 1, 1, w},
                    {0, 0, 1, 1},
                    {0, 0, 1, w},
                    {0, 0, 1, 1}});
}

Vector differences(const CNurbsSurface& of, double u, double v)
{
    constexpr double step = 1e-6;
    const Vector alongU = of.Evaluate(u + step, v) - of.Evaluate(u - step, v);
    const Vector alongV = of.Evaluate(u, v + step) - of.Evaluate(u, v - step);
    return kiv::Normalized(kiv::Cross(alongU, alongV));
}

}  // namespace

class TestNurbs : public MaterialTest {
    Q_OBJECT

private slots:
    void cornersAreExact()
    {
        const CNurbsSurface of = hill();
        QVERIFY(of.IsValid());
        const kiv::CVec2<double> u = of.GetRangeU(), v = of.GetRangeV();
        QVERIFY(u == kiv::CVec2<double>(-0.3, 2.1) && v == kiv::CVec2<double>(0, 4.9));
        const auto corner = [](int column, int row) {
            return Vector(column + 0.1 * row, row / 3., std::sin(1.7 * column) * std::cos(2.3 * row));
        };
        QVERIFY(of.Evaluate(u.x, v.x) == corner(0, 0));
        QVERIFY(of.Evaluate(u.y, v.x) == corner(5, 0));
        QVERIFY(of.Evaluate(u.x, v.y) == corner(0, 3));
        QVERIFY(of.Evaluate(u.y, v.y) == corner(5, 3));
        QVERIFY(of.Evaluate(99, -99) == corner(5, 0));
        QVERIFY(of.Evaluate(std::numeric_limits<double>::quiet_NaN(), 99) == corner(0, 3));
    }

    void aQuarterIsRound()
    {
        const CNurbsSurface of = quarter();
        QVERIFY(of.IsValid());
        for (int i = 0; i <= 100; ++i) {
            Vector normal;
            const Vector at = of.Evaluate(i / 100., 0.3, &normal);
            QVERIFY(std::abs(std::hypot(at.x, at.y) - 2) < 1e-12);
            QVERIFY(std::abs(at.z - 0.9) < 1e-12);
            QVERIFY(kiv::Length(normal - Vector(at.x / 2, at.y / 2, 0)) < 1e-12);
        }
    }

    void normalsFollowThePoints()
    {
        const CNurbsSurface of = hill();
        for (int i = 0; i < 25; ++i) {
            for (int j = 0; j < 25; ++j) {
                const double u = -0.29 + 0.0977 * i;
                const double v = 0.01 + 0.193 * j;
                Vector normal;
                of.Evaluate(u, v, &normal);
                QVERIFY(std::abs(kiv::Length(normal) - 1) < 1e-12);
                QVERIFY(kiv::Length(normal - differences(of, u, v)) < 1e-6);
            }
        }
    }

    void thePoleHasANormal()
    {
        for (const double u : {0., 0.5, 1.}) {
            Vector normal;
            QVERIFY(octant().Evaluate(u, 1, &normal) == Vector(0, 0, 1));
            QVERIFY(kiv::Length(normal - Vector(0, 0, 1)) < 1e-3);
        }
        const Points nowhere(4, {1, 2, 3, 1});
        Vector normal;
        QVERIFY(surface(2, 2, {0, 0, 1, 1}, {0, 0, 1, 1}, nowhere).Evaluate(0.5, 0.5, &normal) == Vector(1, 2, 3));
        QCOMPARE(kiv::Length(normal), 1.);
    }

    void aMeshCoversTheSurface()
    {
        kiv::CTriangleMesh mesh = kiv::CMeshParameter(12, 7).SurfaceToMesh(hill());
        QCOMPARE(mesh.vertices.size(), std::size_t(13 * 8));
        QCOMPARE(mesh.indices.size(), std::size_t(12 * 7 * 6));
        for (std::size_t i = 0; i < mesh.vertices.size(); ++i) {
            const kiv::CVec2<float>& at = mesh.textureCoordinates[i];
            const Vector exact = hill().Evaluate(double(at.x), double(at.y));
            QVERIFY(kiv::Length(exact - kiv::VectorCast<double>(mesh.vertices[i])) < 1e-5);
        }
        for (std::size_t i = 0; i < mesh.indices.size(); i += 3) {
            const auto vertex = [&](std::size_t corner) { return mesh.vertices[mesh.indices[i + corner]]; };
            const kiv::CVec3<float> across = kiv::Cross(vertex(1) - vertex(0), vertex(2) - vertex(0));
            QVERIFY(kiv::Dot(across, mesh.normals[mesh.indices[i]]) > 0);
        }
        kiv::CMeshParameter::NormalizeSurfaceUV(mesh);
        QVERIFY(mesh.textureCoordinates.front() == kiv::CVec2<float>(0, 0));
        QVERIFY(mesh.textureCoordinates.back() == kiv::CVec2<float>(1, 1));
        QCOMPARE(kiv::CMeshParameter(-5, 0).SurfaceToMesh(quarter()).indices.size(), std::size_t(6));
    }

    void refusesWhatDoesNotFit_data()
    {
        const double infinite = std::numeric_limits<double>::infinity();
        const std::vector<double> knots = {0, 0, 1, 1};
        const Points points = {{0, 0, 0, 1}, {1, 0, 0, 1}, {0, 1, 0, 1}, {1, 1, 0, 1}};
        const auto with = [&](std::size_t index, const kiv::CVec4<double>& point) {
            Points changed = points;
            changed[index] = point;
            return surface(2, 2, knots, knots, changed);
        };
        const auto row = testColumns<CNurbsSurface>("of");
        row("nothing", CNurbsSurface());
        row("one point wide", surface(1, 4, {0, 0, 1, 1}, {0, 0, .3, .6, 1, 1}, points));
        row("a point missing", surface(2, 2, knots, knots, Points(3, points[0])));
        row("counts whose product wraps", surface(65536, 65536, knots, knots, {}));
        row("negative counts", surface(INT_MIN, -2, knots, knots, points));
        row("degree 0", surface(2, 2, {0, 1, 2}, knots, points));
        row("degree above the points", surface(2, 2, {0, 0, 0, 1, 1}, knots, points));
        row("degree 10", surface(11, 2, std::vector<double>(22, 0.5), knots, Points(22, points[0])));
        row("falling knots", surface(2, 2, {0, 1, 0.5, 1}, knots, points));
        row("knots without a range", surface(2, 2, {0, 1, 1, 2}, knots, points));
        row("an infinite knot", surface(2, 2, {0, 0, 1, infinite}, knots, points));
        row("no number", with(2, {0, infinite - infinite, 0, 1}));
        row("weight 0", with(3, {1, 1, 0, 0}));
    }

    void refusesWhatDoesNotFit()
    {
        QFETCH(CNurbsSurface, of);
        QVERIFY(!of.IsValid());
        QVERIFY(kiv::CMeshParameter().SurfaceToMesh(of).vertices.empty());
    }
};

MATERIAL_TEST_MAIN(TestNurbs)
#include "TestNurbs.moc"
