#include "MaterialTest.h"

#include <kiv/BodyBuilder.h>
#include <kiv/TangentHelper.h>
#include <kiv/VectorMath.h>

#include <limits>

using kiv::CPrimitiveRenderable;
using Coordinates = std::vector<kiv::CVec2<float>>;
using Vertices = std::vector<kiv::CVec3<float>>;

Q_DECLARE_METATYPE(Coordinates)
Q_DECLARE_METATYPE(kiv::CVec4<float>)

namespace {

// A square in the xy plane, seen from above, of two triangles.
CPrimitiveRenderable square(const Coordinates& coordinates)
{
    CPrimitiveRenderable renderable;
    renderable.SetVertexArray({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}});
    renderable.SetNormalArray(Vertices(4, {0, 0, 1}));
    renderable.SetTextureArray(0, coordinates);
    renderable.SetTextureArray(1, coordinates);
    renderable.SetIndexArray({0, 1, 2, 0, 2, 3});
    return renderable;
}

kiv::CVec3<float> direction(const kiv::CVec4<float>& tangent)
{
    return {tangent.x, tangent.y, tangent.z};
}

}  // namespace

class TestTangents : public MaterialTest {
    Q_OBJECT

private slots:
    void followTheTexture_data()
    {
        const auto row = testColumns<Coordinates, kiv::CVec4<float>>("coordinates", "expected");
        row("plain", Coordinates{{0, 0}, {1, 0}, {1, 1}, {0, 1}}, kiv::CVec4<float>(1, 0, 0, 1));
        row("tiny", Coordinates{{0, 0}, {1e-12f, 0}, {1e-12f, 1e-12f}, {0, 1e-12f}}, kiv::CVec4<float>(1, 0, 0, 1));
        row("mirrored", Coordinates{{1, 0}, {0, 0}, {0, 1}, {1, 1}}, kiv::CVec4<float>(-1, 0, 0, -1));
        row("upside down", Coordinates{{0, 1}, {1, 1}, {1, 0}, {0, 0}}, kiv::CVec4<float>(1, 0, 0, -1));
        row("turned", Coordinates{{0, 3}, {0, 0}, {3, 0}, {3, 3}}, kiv::CVec4<float>(0, 1, 0, 1));
    }

    void followTheTexture()
    {
        QFETCH(Coordinates, coordinates);
        QFETCH(kiv::CVec4<float>, expected);
        CPrimitiveRenderable renderable = square(coordinates);
        QVERIFY(kiv::CTangentHelper::GenTangents(renderable));
        QVERIFY(renderable.IsDrawable());
        for (const kiv::CVec4<float>& tangent : renderable.GetTangentArray()) {
            QVERIFY(kiv::Length(direction(tangent) - direction(expected)) < 1e-6f);
            QCOMPARE(tangent.w, expected.w);
        }
    }

    void arePerpendicularOnARoundBody()
    {
        const kiv::CBodyPtr body = kiv::GBodyBuilder(true, true).CylinderBody({0, 0, 0}, {0, 0, 2}, 1);
        CPrimitiveRenderable renderable;
        renderable.SetMesh(kiv::CBodyTriangles(body.get()).GetMesh());
        QVERIFY(kiv::CTangentHelper::GenTangents(renderable));
        for (std::size_t i = 0; i < renderable.GetVertexArray().size(); ++i) {
            const kiv::CVec4<float>& tangent = renderable.GetTangentArray()[i];
            const kiv::CVec3<float>& normal = renderable.GetNormalArray()[i];
            QVERIFY(std::abs(kiv::Length(direction(tangent)) - 1) < 1e-5f);
            QVERIFY(std::abs(kiv::Dot(direction(tangent), normal)) < 1e-5f);
            QCOMPARE(tangent.w, 1.f);
            if (normal.z == 0)  // round the side, to the right for who looks at it
                QVERIFY(kiv::Length(direction(tangent) - kiv::CVec3<float>(-normal.y, normal.x, 0)) < 1e-5f);
        }
    }

    void areFoundWhereNothingTells()
    {
        const float half = std::sqrt(0.5f), noNumber = std::numeric_limits<float>::quiet_NaN();
        const Coordinates place(4, {0.5f, 0.5f}), line{{0, 0}, {1, 1}, {2, 2}, {3, 3}}, none(4, {noNumber, noNumber});
        for (const Coordinates& coordinates : {place, line, none}) {
            CPrimitiveRenderable renderable = square(coordinates);
            renderable.SetNormalArray({{1, 0, 0}, {0, -1, 0}, {0, half, half}, {0, 0, 0}});
            QVERIFY(kiv::CTangentHelper::GenTangents(renderable));
            for (std::size_t i = 0; i < 4; ++i) {
                const kiv::CVec4<float>& tangent = renderable.GetTangentArray()[i];
                QVERIFY(std::abs(kiv::Length(direction(tangent)) - 1) < 1e-6f);
                QVERIFY(std::abs(kiv::Dot(direction(tangent), renderable.GetNormalArray()[i])) < 1e-6f);
                QCOMPARE(std::abs(tangent.w), 1.f);
            }
        }
    }

    void arraysThatDoNotFitAreRefused()
    {
        const Coordinates plain = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
        const auto refuses = [](CPrimitiveRenderable renderable) {
            return !kiv::CTangentHelper::GenTangents(renderable) && renderable.GetTangentArray().empty() &&
                   !renderable.IsDrawable();
        };
        QVERIFY(refuses(square({{0, 0}, {1, 0}})));
        CPrimitiveRenderable renderable = square(plain);
        renderable.SetIndexArray({0, 1, 4});
        QVERIFY(refuses(renderable));
        renderable.SetIndexArray({0, 1, 2, 3});
        QVERIFY(refuses(renderable));
        renderable = square(plain);
        renderable.SetNormalArray({});
        QVERIFY(refuses(renderable));
        renderable = CPrimitiveRenderable(CPrimitiveRenderable::Triangles, -1);
        renderable.SetTextureArray(0, plain);
        QVERIFY(refuses(renderable));
        renderable = square(plain);
        renderable.SetTextureArray(-1, {});
        renderable.SetTextureArray(2, {});
        QVERIFY(renderable.IsDrawable());
        renderable.SetTextureArray(1, {});
        QVERIFY(!renderable.IsDrawable());
    }

    void boundsLeaveOutWhatIsNoNumber()
    {
        kiv::CVec3<float> lowest, highest;
        CPrimitiveRenderable renderable;
        QVERIFY(!renderable.GetBounds(lowest, highest));
        const float noNumber = std::numeric_limits<float>::quiet_NaN();
        renderable.SetVertexArray(
            {{noNumber, 0, 0}, {-3, 2, 1}, {0, std::numeric_limits<float>::infinity(), 9}, {1, -4, 5}});
        QVERIFY(renderable.GetBounds(lowest, highest));
        QVERIFY(lowest == kiv::CVec3<float>(-3, -4, 1) && highest == kiv::CVec3<float>(1, 2, 5));
    }
};

MATERIAL_TEST_MAIN(TestTangents)
#include "TestTangents.moc"
