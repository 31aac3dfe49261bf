// What is drawn, against stored pictures. UPDATE_PICTURES=1 stores them anew: look at each before it is committed.
#include "MaterialTest.h"
#include "PreviewFixture.h"

#include <QDir>

#include <cmath>

namespace {

constexpr int Width = 180;
constexpr int Height = 120;

double linear(int value)
{
    const double c = value / 255.0;
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

// The light before the tone curve, which bends what is above 0.6.
double sceneLight(int value)
{
    const double shown = linear(value);
    return shown <= 0.6 ? shown : 0.6 - 0.4 * std::log((1 - shown) / 0.4);
}

int difference(QRgb a, QRgb b)
{
    return qMax(qAbs(qRed(a) - qRed(b)), qMax(qAbs(qGreen(a) - qGreen(b)), qAbs(qBlue(a) - qBlue(b))));
}

}  // namespace

class TestPreviewPictures : public MaterialTest {
    Q_OBJECT

private slots:
    void looksAsStored_data()
    {
        const auto row = testColumns<QString, QString, int, bool>("material", "shape", "shading", "hasSky");
        const QString brick = "Red facing brick, running bond", steel = "Stainless steel, mirror";
        row("brick_cylinder", brick, "Cylinder", 1, true);
        row("brick_box", brick, "Box", 1, true);
        row("brick_sphere_unshaded", brick, "Sphere", 0, true);
        row("brick_sphere_fast", brick, "Sphere", 2, true);
        row("brick_sphere_without_sky", brick, "Sphere", 1, false);
        row("metal_sphere", steel, "Sphere", 1, true);
        row("metal_surface_fast", steel, "Surface", 2, true);
        row("glass_sphere", "Clear float glass", "Sphere", 1, true);
        row("glass_box_fast_without_sky", "Clear float glass", "Box", 2, false);
    }

    void looksAsStored()
    {
        QFETCH(QString, material);
        QFETCH(QString, shape);
        QFETCH(int, shading);
        QFETCH(bool, hasSky);
        PreviewFixture preview;
        preview.manager().SetShaderLevelOfDetail(kiv::CAppearanceLibraryManager::EnShaderLevelOfDetail(shading));
        preview.setSky(hasSky ? PreviewFixture::shippedSky() : QString());
        preview.viewer().SetBackgroundColor({90, 120, 60});
        preview.setShape(shape);
        preview.setMaterial(preview.material(material));
        compare(preview.picture(Width, Height), QTest::currentDataTag());
        QCOMPARE(preview.viewer().GetReason(), std::string());
    }

    // In white light from all sides a white body cannot be told from its surroundings.
    void whiteFurnace()
    {
        QTemporaryDir folder;
        PreviewFixture preview;
        preview.viewer().GetScene().FindLight("HeadLamp")->SetIntensity(0);
        preview.setSky(PreviewFixture::makeSky(folder.path(), [](const QString&) { return QColor(Qt::white); }));
        const auto white = preview.greenMaterial();
        white->SetDiffuse({1, 1, 1, 1});
        for (const auto& [metallic, roughness] :
             {std::pair(0.0F, 0.05F), {0.0F, 0.5F}, {0.0F, 1.0F}, {1.0F, 0.05F}, {1.0F, 0.5F}, {1.0F, 1.0F}}) {
            white->SetProperty("metallic", kiv::MakePropertyValue(metallic));
            white->SetProperty("roughness", kiv::MakePropertyValue(roughness));
            preview.setMaterial(white);
            const QImage picture = preview.picture(100, 100);
            for (const QPoint& place : {QPoint(50, 50), QPoint(30, 40), QPoint(50, 12), QPoint(85, 60)}) {
                const double light = sceneLight(qGreen(picture.pixel(place)));
                const QString where = QString("%1 at %2, %3").arg(light).arg(place.x()).arg(place.y());
                QVERIFY2(std::abs(light - 1) < 0.02,
                         qPrintable(where + QString(", metallic %1, roughness %2").arg(metallic).arg(roughness)));
            }
        }
    }

    void showsSkyWhereItIs()
    {
        QTemporaryDir folder;
        PreviewFixture preview;
        preview.setSky(PreviewFixture::makeSky(folder.path(), [](const QString& side) {
            return side == "left" ? Qt::red : side == "right" ? Qt::green : side == "top" ? Qt::blue : Qt::black;
        }));
        using kiv::CCamera;
        const std::pair<int, QRgb> expected[] = {{CCamera::ViewRight, qRgb(255, 0, 0)},
                                                 {CCamera::ViewLeft, qRgb(0, 255, 0)},
                                                 {CCamera::ViewBottom, qRgb(0, 0, 255)},
                                                 {CCamera::ViewFront, qRgb(0, 0, 0)}};
        for (const auto& [side, color] : expected) {
            preview.viewer().SetViewPoint(side);
            QCOMPARE(preview.picture(60, 60).pixel(2, 2), color);
        }
    }

private:
    // Drivers round differently and place edges a little apart; a wrong light, texture or shape is far beyond this.
    static void compare(const QImage& picture, const QString& name)
    {
        const QString stored = QStringLiteral(MATERIAL_TESTS_DIR "/preview/pictures/") + name + ".png";
        if (qEnvironmentVariableIsSet("UPDATE_PICTURES"))
            QVERIFY(picture.save(stored));
        const QImage expected(stored);
        QCOMPARE(picture.size(), expected.size());
        double sum = 0;
        int far = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const int apart = difference(picture.pixel(x, y), expected.pixel(x, y));
                sum += apart;
                far += apart > 48;
            }
        }
        const int count = picture.width() * picture.height();
        const bool isSame = sum / count < 2.5 && far < count / 50;
        if (!isSame)
            picture.save(QDir::current().filePath("failed_" + name + ".png"));
        QVERIFY2(isSame, qPrintable(QString("mean %1, far %2").arg(sum / count).arg(far)));
    }
};

MATERIAL_TEST_MAIN(TestPreviewPictures)
#include "TestPreviewPictures.moc"
