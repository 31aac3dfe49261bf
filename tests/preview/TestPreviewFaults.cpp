// What is missing, broken or out of range: a picture all the same, and a reason where one is due.
#include "MaterialTest.h"
#include "Measured.h"
#include "PreviewFixture.h"
#include "TestFiles.h"

#include <QDir>

#include <PreviewBodies.h>
#include <PreviewSkybox.h>

#include <limits>

namespace {

constexpr int Width = 60;
constexpr int Height = 40;
const QPoint Corner(2, 2);
const QPoint Middle(Width / 2, Height / 2);
const char* const Brick = "Red facing brick, running bond";
const kiv::CColor Background{90, 120, 60};
const QRgb BackgroundPixel = qRgb(90, 120, 60);

// The tone curve takes a little off what is brightest.
bool isLike(QRgb pixel, const QColor& color)
{
    return qAbs(qRed(pixel) - color.red()) < 24 && qAbs(qGreen(pixel) - color.green()) < 24 &&
           qAbs(qBlue(pixel) - color.blue()) < 24;
}

bool contains(const std::string& text, const QString& part)
{
    return QString::fromStdString(text).contains(part);
}

kiv::CSkybox::Faces shippedFaces()
{
    return PreviewSkyboxFaces(PreviewFixture::shippedSky().toStdWString()).value();
}

}  // namespace

class TestPreviewFaults : public MaterialTest {
    Q_OBJECT

private slots:
    void unreadableTextures_data()
    {
        const auto row = testColumns<QByteArray, bool>("bytes", "exists");
        QFile file(QStringLiteral(MATERIAL_DATA_DIR "/textures/brick_red_running.png"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray whole = file.readAll();
        row("missing", {}, false);
        row("empty", {}, true);
        row("cut off", whole.left(whole.size() / 2), true);
        row("text", "this is no picture", true);
    }

    void unreadableTextures()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, exists);
        expectWarning("libpng|QImage|Read Error");
        QTemporaryDir folder;
        const QString path = folder.filePath("picture.png");
        if (exists)
            writeFile(path, bytes);
        PreviewFixture preview;
        const auto material = preview.greenMaterial();
        preview.setMaterial(material);
        const QImage plain = preview.picture(Width, Height);
        PreviewFixture::setTexture(material, path);
        preview.setMaterial(material);
        QCOMPARE(preview.picture(Width, Height), plain);
        QVERIFY2(contains(preview.viewer().GetReason(), path), preview.viewer().GetReason().c_str());

        // The reason goes with its cause.
        preview.setMaterial(preview.material(Brick));
        QVERIFY(preview.picture(Width, Height) != plain);
        QCOMPARE(preview.viewer().GetReason(), std::string());
    }

    void unusualTextureSizes()
    {
        QTemporaryDir folder;
        PreviewFixture preview;
        preview.showTextureOnly();
        for (const QSize& size : {QSize(1, 1), QSize(16384, 16), QSize(16, 16384), QSize(3001, 7)}) {
            const QString path = folder.filePath(QString("%1x%2.png").arg(size.width()).arg(size.height()));
            PreviewFixture::writePicture(path, size, Qt::red, Qt::blue);
            const auto material = preview.greenMaterial();
            PreviewFixture::setTexture(material, path);
            preview.setMaterial(material);
            const QImage picture = preview.picture(Width, Height);
            const QRgb left = picture.pixel(Middle - QPoint(4, 0));
            const QRgb right = picture.pixel(Middle + QPoint(4, 0));
            // A tall strip shrinks to one mixed colour where the driver does not filter along the view.
            const bool isTall = size.height() > size.width();
            QVERIFY2(isTall ? qGreen(left) < 40 : isLike(left, Qt::red), qPrintable(path));
            QVERIFY2(isTall || isLike(right, size.width() > 1 ? Qt::blue : Qt::red), qPrintable(path));
            QCOMPARE(preview.viewer().GetReason(), std::string());
        }
    }

    void textureReplacedOnDisk()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath("picture.png");
        PreviewFixture preview;
        preview.showTextureOnly();
        const auto material = preview.greenMaterial();
        PreviewFixture::setTexture(material, path);
        preview.setMaterial(material);
        QDateTime time = QDateTime::currentDateTime();
        for (const QColor color : {Qt::red, Qt::blue, Qt::yellow}) {
            PreviewFixture::writePicture(path, {8, 8}, color, color);
            time = time.addSecs(1);
            PreviewFixture::setModified(path, time);
            QVERIFY(isLike(preview.picture(Width, Height).pixel(Middle), color));
        }
    }

    void turnedTextures_data()
    {
        const auto row = testColumns<QVector<float>, QString>("transform", "expected");
        // The picture has red, green, blue and yellow quarters (R, G, B, Y): upper left, upper right, lower left, lower
        // right. A coordinate is turned before the picture is read there, so the picture turns the other way.
        row("as it is", {1, 0, 0, 0, 1, 0, 0, 0, 1}, "RGBY");
        row("mirrored sideways", {-1, 0, 1, 0, 1, 0, 0, 0, 1}, "GRYB");
        row("mirrored upside down", {1, 0, 0, 0, -1, 1, 0, 0, 1}, "BYRG");
        row("a quarter clockwise", {0, -1, 1, 1, 0, 0, 0, 0, 1}, "BRYG");
        row("half a turn", {-1, 0, 1, 0, -1, 1, 0, 0, 1}, "YBGR");
        row("moved by half its width", {1, 0, 0.5F, 0, 1, 0, 0, 0, 1}, "GRYB");
        row("its upper left quarter", {0.5F, 0, 0, 0, 0.5F, 0.5F, 0, 0, 1}, "RRRR");
    }

    void turnedTextures()
    {
        QFETCH(QVector<float>, transform);
        QFETCH(QString, expected);
        const QMap<QChar, QColor> colors{{'R', Qt::red}, {'G', Qt::green}, {'B', Qt::blue}, {'Y', Qt::yellow}};
        QTemporaryDir folder;
        QImage quarters(64, 64, QImage::Format_RGB32);
        for (int y = 0; y < 64; ++y) {
            for (int x = 0; x < 64; ++x)
                quarters.setPixelColor(x, y, colors[QString("RGBY")[(y / 32) * 2 + x / 32]]);
        }
        QVERIFY(quarters.save(folder.filePath("quarters.png")));
        PreviewFixture preview;
        preview.showTextureOnly();
        const auto material = preview.greenMaterial();
        PreviewFixture::setTexture(material, folder.filePath("quarters.png"));
        kiv::CMatrix3<float> matrix;
        std::copy(transform.cbegin(), transform.cend(), matrix.m.begin());
        material->GetDiffuseTexture()->SetProperty("transform", kiv::MakePropertyValue(matrix));
        preview.setMaterial(material);
        const QImage picture = preview.picture(Width, Height);
        for (int i = 0; i < 4; ++i) {
            const QPoint place = Middle + QPoint(i % 2 == 0 ? -6 : 6, i / 2 == 0 ? -6 : 6);
            QVERIFY2(isLike(picture.pixel(place), colors[expected[i]]),
                     qPrintable(QString("quarter %1 is %2").arg(i).arg(picture.pixelColor(place).name())));
        }
    }

    void shadersThatDoNotCompile_data()
    {
        const auto row = testColumns<QByteArray, QByteArray>("vertex", "fragment");
        const QByteArray good = "void main() { gl_Position = vec4(0.0); }";
        row("broken vertex shader", "void main( {", "void main() {}");
        row("broken fragment shader", good, "void main() { gl_FragColor = nothing; }");
        row("not linking", good, "void missing(); void main() { missing(); }");
        row("no fragment shader", good, {});
    }

    void shadersThatDoNotCompile()
    {
        QFETCH(QByteArray, vertex);
        QFETCH(QByteArray, fragment);
        expectWarning("QOpenGLShader|shader source code|vertex shader|fragment shader|missing");
        const auto program = std::make_shared<kiv::CShaderProgram>("a sky", kiv::CShader::GLSL);
        const std::pair<int, QByteArray> texts[] = {{kiv::CShader::Vertex, vertex}, {kiv::CShader::Fragment, fragment}};
        for (const auto& [type, text] : texts) {
            const auto shader = std::make_shared<kiv::CShader>("a shader", type, kiv::CShader::GLSL);
            if (shader->LoadShaderFromStr(text.toStdString()))
                program->SetShader(shader);
        }
        PreviewFixture preview;
        preview.viewer().SetBackgroundColor(Background);
        preview.setSky(PreviewFixture::shippedSky());
        preview.setMaterial(preview.greenMaterial());
        const QRgb body = preview.picture(Width, Height).pixel(Middle);
        preview.viewer().GetViewport().SetSkyBox(true, shippedFaces(), program);
        for (int frame = 0; frame < 2; ++frame) {
            const QImage picture = preview.picture(Width, Height);
            QCOMPARE(picture.pixel(Middle), body);
            QCOMPARE(picture.pixel(Corner), BackgroundPixel);
            QVERIFY2(contains(preview.viewer().GetReason(), "\"a sky\""), preview.viewer().GetReason().c_str());
        }
        preview.viewer().GetViewport().SetSkyBox(true, shippedFaces(), nullptr);
        QCOMPARE(preview.picture(Width, Height).pixel(Corner), BackgroundPixel);
        preview.setSky(PreviewFixture::shippedSky());
        QVERIFY(preview.picture(Width, Height).pixel(Corner) != BackgroundPixel);
        QCOMPARE(preview.viewer().GetReason(), std::string());
    }

    void unknownShaderPart()
    {
        PreviewFixture preview;
        const auto picture = [&](kiv::EnShading shading, const std::vector<std::string>& parts) {
            GRefPtr<kiv::CStateSet> stateSet(new kiv::CStateSet);
            stateSet->SetShading(shading);
            stateSet->SetShaderParts(parts);
            stateSet->SetUniform("baseColor", kiv::CVec4<float>(1, 0, 0, 1));
            preview.node()->SetStateSet(stateSet.get());
            return preview.picture(Width, Height);
        };
        const QImage plain = picture(kiv::EnShading::Unshaded, {});
        QVERIFY(isLike(plain.pixel(Middle), Qt::red));
        QCOMPARE(picture(kiv::EnShading::Default, {"nobody knows this", "../inputs", ""}), plain);
        QCOMPARE(picture(kiv::EnShading::Default, {"nobodyKnowsThis"}), plain);
    }

    // Each property in turn, on a surface that is bright everywhere: a number that spoils the arithmetic leaves black
    // holes.
    void numbersOutOfRange()
    {
        PreviewFixture preview;
        preview.setSky(PreviewFixture::shippedSky());
        const auto brick = preview.material("White facing brick, stack bond");
        using Limits = std::numeric_limits<float>;
        for (const float number :
             {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), Limits::max(), Limits::lowest(), -1.0F}) {
            const kiv::CVec4<float> color(number, 0.5F, number, 1);
            kiv::CMatrix3<float> transform;
            transform.m.fill(number);
            const auto check = [&](const std::string& property, const kiv::CPropertyValuePtr& value) {
                const auto material = brick->Clone("changed");
                material->SetUseDiffuseTexture(property != "diffuse_color");
                const bool ofTexture = property.find("texture") != std::string::npos;
                const auto changed =
                    ofTexture ? material->FindProperty(property)->Get<kiv::CAppearanceInstancePtr>() : material;
                changed->SetProperty(ofTexture ? "transform" : property, value);
                preview.setMaterial(material);
                const QImage picture = preview.picture(Width, Height);
                int holes = 0;
                for (int i = 0; i < Width * Height; ++i)
                    holes += qGray(picture.pixel(i % Width, i / Width)) < 6;
                QVERIFY2(holes == 0, qPrintable(QString("%1 %2").arg(property.c_str()).arg(double(number))));
            };
            for (const char* property :
                 {"roughness", "metallic", "ior", "transparent", "bumpStrength", "lightPower", "shininess"})
                check(property, kiv::MakePropertyValue(number));
            for (const char* property : {"diffuse_color", "specular_color", "lightColor"})
                check(property, kiv::MakePropertyValue(color));
            for (const char* texture : {"diffuse_texture", "bump_texture"})
                check(texture, kiv::MakePropertyValue(transform));
        }
    }

    void windowsThatShowNothing()
    {
        QWidget host;
        host.resize(0, 0);
        kiv::CViewer viewer(host.winId());
        const auto node = std::make_shared<kiv::CVisualNode>("body");
        node->SetRenderable(MakePreviewBody("Box"));
        viewer.GetScene().GetRoot()->AddChild(node);
        viewer.ZoomAll();
        QVERIFY(host.size().isEmpty());
        QVERIFY(viewer.PickNode(0, 0) == nullptr);
        host.show();
        host.resize(0, 0);
        QCoreApplication::processEvents();
        host.hide();
        const unsigned before = viewer.GetFrameCount();
        viewer.SetDirty();
        QCoreApplication::processEvents();
        QCOMPARE(viewer.GetFrameCount(), before);
        for (const QSize& size : {QSize(0, 0), QSize(0, 40), QSize(60, -1), QSize(100000, 10)})
            QVERIFY(viewer.Snapshot(size.width(), size.height()) == nullptr);

        host.resize(Width, Height);
        host.show();
        QTRY_VERIFY(viewer.GetFrameCount() > before);
        viewer.ZoomAll();
        QVERIFY(viewer.PickNode(Width / 2, Height / 2) == node);
    }

    void picksWhatIsSeen()
    {
        QWidget host;
        host.resize(200, 100);
        kiv::CViewer viewer(host.winId());
        std::map<QString, kiv::CVisualNodePtr> nodes;
        for (const char* shape : {"Box", "Sphere", "Surface"}) {
            nodes[shape] = std::make_shared<kiv::CVisualNode>(shape);
            nodes[shape]->SetRenderable(MakePreviewBody(shape));
        }
        const kiv::CVisualNodePtr& root = viewer.GetScene().GetRoot();
        QVERIFY(viewer.PickNode(100, 50) == nullptr);
        root->AddChild(nodes["Sphere"]);
        nodes["Sphere"]->AddChild(nodes["Box"]);
        for (const int type : {kiv::CCamera::Perspective, kiv::CCamera::Orthographic}) {
            viewer.GetCamera().SetType(type, 1);
            viewer.SetViewPoint(kiv::CCamera::ViewFront);
            viewer.ZoomAll();
            QVERIFY(viewer.PickNode(100, 50) == nodes["Box"]);  // the sphere is inside
            for (const QPoint& beside :
                 {QPoint(5, 50), QPoint(195, 50), QPoint(100, 1), QPoint(-50, 50), QPoint(500, 50)})
                QVERIFY(viewer.PickNode(beside.x(), beside.y()) == nullptr);
        }
        nodes["Sphere"]->RemoveChild(nodes["Box"].get());
        QVERIFY(viewer.PickNode(100, 50) == nodes["Sphere"]);
        root->AddChild(nodes["Surface"]);
        QVERIFY(viewer.PickNode(100, 50) == nodes["Sphere"]);  // that one is elsewhere
    }

    // All materials once, which is more than the textures kept; then the level must stay.
    void manyAppearances()
    {
        constexpr int count = 1000;
        constexpr std::size_t shown = 20;  // of which all textures are kept: reading files is not the point here
        [[maybe_unused]] constexpr double allowedMegabytes = 24;
        PreviewFixture preview;
        preview.setSky(PreviewFixture::shippedSky());
        std::vector<kiv::CAppearanceInstancePtr> materials;
        for (const auto& entry : *preview.manager().GetSystemLibrary())
            materials.push_back(entry.second);
        QVERIFY(materials.size() > 50);
        const auto show = [&](const kiv::CAppearanceInstancePtr& material) {
            preview.setMaterial(material);
            return preview.viewer().Snapshot(Width, Height) != nullptr;
        };
        for (const auto& material : materials)
            QVERIFY(show(material));
        const double before = residentMegabytes();
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < count; ++i)
            QVERIFY(show(materials[std::size_t(i) % shown]));
        qInfo("%d appearances in %lld ms, %.1f MB before, %.1f MB after", count, timer.elapsed(), before,
              residentMegabytes());
#ifndef __SANITIZE_ADDRESS__  // which keeps freed memory back
        QVERIFY(residentMegabytes() < before + allowedMegabytes);
#endif
        QCOMPARE(preview.viewer().GetReason(), std::string());
    }
};

MATERIAL_TEST_MAIN(TestPreviewFaults)
#include "TestPreviewFaults.moc"
