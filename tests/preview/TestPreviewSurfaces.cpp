// What decides how a surface looks, one thing at a time.
#include "MaterialTest.h"
#include "Measured.h"
#include "PreviewFixture.h"

#include <PreviewBodies.h>

Q_DECLARE_METATYPE(kiv::CStateSet::Uniform)

namespace {

constexpr int Side = 60;
using Color = kiv::CVec4<float>;

kiv::CPrimitiveRenderablePtr pane(float y)
{
    auto renderable = std::make_shared<kiv::CPrimitiveRenderable>(kiv::CPrimitiveRenderable::Triangles, 1);
    renderable->SetVertexArray({{-1, y, -1}, {1, y, -1}, {1, y, 1}, {-1, y, 1}});
    renderable->SetNormalArray(std::vector<kiv::CVec3<float>>(4, {0, -1, 0}));
    renderable->SetTextureArray(0, std::vector<kiv::CVec2<float>>(4));
    renderable->SetIndexArray({0, 1, 2, 0, 2, 3});
    return renderable;
}

kiv::CVisualNodePtr node(const kiv::CPrimitiveRenderablePtr& renderable, const Color& color)
{
    const GRefPtr<kiv::CStateSet> stateSet(new kiv::CStateSet);
    stateSet->SetShading(kiv::EnShading::Unshaded);
    stateSet->SetUniform("baseColor", color);
    stateSet->SetUniform("alpha", color.w);
    stateSet->SetTransparent(color.w < 1);
    auto made = std::make_shared<kiv::CVisualNode>("pane");
    made->SetRenderable(renderable);
    made->SetStateSet(stateSet.get());
    return made;
}

QColor middleOf(const QImage& picture)
{
    return picture.pixelColor(Side / 2, Side / 2);
}

}  // namespace

class TestPreviewSurfaces : public MaterialTest {
    Q_OBJECT

private slots:
    // Two halves of what lies behind each; the order in which they came into the scene does not count.
    void nearerPaneTintsTheFarther_data()
    {
        const auto row = testColumns<int, bool>("viewPoint", "redIsFirst");
        row("from the front", kiv::CCamera::ViewFront, true);
        row("from the back", kiv::CCamera::ViewBack, true);
        row("from the front, added the other way", kiv::CCamera::ViewFront, false);
        row("from the back, added the other way", kiv::CCamera::ViewBack, false);
    }

    void nearerPaneTintsTheFarther()
    {
        QFETCH(int, viewPoint);
        QFETCH(bool, redIsFirst);
        const auto red = node(pane(-1), {1, 0, 0, 0.5F}), blue = node(pane(1), {0, 0, 1, 0.5F});
        kiv::CViewer viewer(0);
        viewer.GetOptions().SetViewAxesEnabled(false);
        viewer.SetBackgroundColor({0, 0, 0});
        viewer.GetScene().GetRoot()->AddChild(redIsFirst ? red : blue);
        viewer.GetScene().GetRoot()->AddChild(redIsFirst ? blue : red);
        viewer.SetViewPoint(viewPoint);
        viewer.ZoomAll();
        const QColor middle = middleOf(pictureOf(viewer, Side, Side));
        const bool fromFront = viewPoint == kiv::CCamera::ViewFront;
        const int nearer = fromFront ? middle.red() : middle.blue(), farther = fromFront ? middle.blue() : middle.red();
        QVERIFY2(nearer > farther + 40 && farther > 40, qPrintable(QString("%1 over %2").arg(nearer).arg(farther)));
    }

    void uniformChangesTheMiddle_data()
    {
        using Uniform = kiv::CStateSet::Uniform;
        const auto row = testColumns<QString, QString, Uniform, Uniform, bool>("part", "uniform", "low", "high", "sky");
        row("own light", "generic", "lightPower", 0.0F, 20.0F, false);
        row("colour", "generic", "baseColor", Color(0, 0, 0, 1), Color(1, 1, 1, 1), false);
        row("a rough metal scatters less", "generic", "metallic", 1.0F, 0.0F, false);
        row("smooth has a brighter highlight", "generic", "roughness", 0.9F, 0.1F, false);
        row("index of refraction mirrors", "generic", "ior", 1.0F, 3.0F, false);
        row("bright sky", "generic", "enableIBL", false, true, true);
        row("index of refraction of glass", "glass", "ior", 1.0F, 3.0F, false);
        row("highlight of the old model", "phong", "specularColor", Color(0, 0, 0, 1), Color(1, 1, 1, 1), false);
        row("metal, fast", "metalFast", "metallic", 1.0F, 0.0F, false);
        row("opacity", "generic", "alpha", 0.0F, 1.0F, false);
    }

    void uniformChangesTheMiddle()
    {
        QFETCH(QString, part);
        QFETCH(QString, uniform);
        QFETCH(kiv::CStateSet::Uniform, low);
        QFETCH(kiv::CStateSet::Uniform, high);
        QFETCH(bool, sky);
        PreviewFixture preview;
        QTemporaryDir folder;
        if (sky)
            preview.setSky(PreviewFixture::makeSky(folder.path(), [](const QString&) { return Qt::white; }));
        preview.viewer().SetBackgroundColor({0, 0, 0});
        const auto middle = [&](const kiv::CStateSet::Uniform& value) {
            const GRefPtr<kiv::CStateSet> stateSet(new kiv::CStateSet);
            stateSet->SetShaderParts({part.toStdString()});
            stateSet->SetUniform("baseColor", Color(0.3F, 0.3F, 0.3F, 1));
            stateSet->SetUniform("roughness", 0.9F);
            stateSet->SetUniform(uniform.toStdString(), value);
            stateSet->SetTransparent(true);
            preview.node()->SetStateSet(stateSet.get());
            return qGray(middleOf(preview.picture(Side, Side)).rgb());
        };
        const int below = middle(low), above = middle(high);
        QVERIFY2(above > below + 5, qPrintable(QString("%1, then %2").arg(below).arg(above)));
    }

    void reliefTurnsWithItsPicture_data()
    {
        const auto row = testColumns<QVector<float>, QString>("transform", "lit");
        row("as it is", {1, 0, 0, 0, 1, 0, 0, 0, 1}, "from the right");
        row("mirrored sideways", {-1, 0, 1, 0, 1, 0, 0, 0, 1}, "from the left");
        row("mirrored upside down", {1, 0, 0, 0, -1, 1, 0, 0, 1}, "from the right");
        row("a quarter clockwise", {0, -1, 1, 1, 0, 0, 0, 0, 1}, "from below");
        row("a quarter the other way", {0, 1, 0, -1, 0, 1, 0, 0, 1}, "from above");
        row("half a turn", {-1, 0, 1, 0, -1, 1, 0, 0, 1}, "from the left");
        row("larger", {0.25F, 0, 0, 0, 0.25F, 0, 0, 0, 1}, "from the right");
    }

    // A slope that faces right in its picture, under a sky with a colour for each direction.
    void reliefTurnsWithItsPicture()
    {
        QFETCH(QVector<float>, transform);
        const std::map<QString, QColor> sides{
            {"right", Qt::red}, {"left", Qt::green}, {"top", Qt::blue}, {"bottom", Qt::white}};
        QTemporaryDir folder;
        QImage slope(8, 8, QImage::Format_RGB32);
        slope.fill(QColor(217, 128, 217));
        QVERIFY(slope.save(folder.filePath("slope.png")));
        PreviewFixture preview;
        preview.showFrontOfBox();
        preview.viewer().GetScene().FindLight("HeadLamp")->SetIntensity(0);
        preview.setSky(PreviewFixture::makeSky(folder.path(), [&](const QString& side) {
            const auto color = sides.find(side);
            return color == sides.end() ? QColor(Qt::black) : color->second;
        }));
        const auto material = preview.greenMaterial();
        material->SetDiffuse({1, 1, 1, 1});
        material->SetProperty("roughness", kiv::MakePropertyValue(1.0F));
        material->SetProperty("enableBump", kiv::MakePropertyValue(true));
        material->GetBumpTexture()->SetTextureFile(folder.filePath("slope.png").toStdString());
        kiv::CMatrix3<float> matrix;
        std::copy(transform.cbegin(), transform.cend(), matrix.m.begin());
        material->GetBumpTexture()->SetProperty("transform", kiv::MakePropertyValue(matrix));
        preview.setMaterial(material);
        const QColor seen = middleOf(preview.picture(Side, Side));
        const int most = qMax(seen.red(), qMax(seen.green(), seen.blue()));
        const int least = qMin(seen.red(), qMin(seen.green(), seen.blue()));
        const QString lit = most - least < 40      ? "from below"
                            : most == seen.red()   ? "from the right"
                            : most == seen.green() ? "from the left"
                                                   : "from above";
        QTEST(lit, "lit");
    }
};

MATERIAL_TEST_MAIN(TestPreviewSurfaces)
#include "TestPreviewSurfaces.moc"
