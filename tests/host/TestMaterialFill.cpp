#include "HostFixture.h"

#include <MaterialFill.h>
#include <MaterialTest.h>

#include <QPainter>

using kiv::CVec2;

namespace {

constexpr double PixelsPerMetre = 50;
const QPointF Origin(20, 180);  // of the building, in a picture of 200 x 200 pixels

QColor at(const QImage& image, const QPointF& metres)
{
    const QPointF pixel = Origin + QPointF(metres.x(), -metres.y()) * PixelsPerMetre;
    return image.pixelColor(pixel.toPoint());
}

QString nameOf(const QColor& colour)
{
    return colour.red() > 150 ? "red" : colour.blue() > 150 ? "blue" : colour.name();
}

}  // namespace

/// A texture is drawn at its real size, turned, moved and mirrored as its placement says.
class TestMaterialFill : public MaterialTest {
    Q_OBJECT

private slots:
    void placement_data()
    {
        const auto row = testColumns<double, double, double, double, QPointF, QString>("width", "rotation", "offset",
                                                                                       "tilt", "point", "colour");
        row("starts at the origin", 2, 0, 0, 1, {0.9, 0.5}, "red");
        row("has its real width", 2, 0, 0, 1, {1.1, 0.5}, "blue");
        row("repeats", 2, 0, 0, 1, {2.1, 0.5}, "red");
        row("smaller", 1, 0, 0, 1, {0.6, 0.5}, "blue");
        row("mirrored", -2, 0, 0, 1, {0.9, 0.5}, "blue");
        row("moved to the right", 2, 0, 0.5, 1, {1.4, 0.5}, "red");
        row("turned a quarter, along", 2, 90, 0, 1, {1.1, 0.5}, "blue");
        row("turned a quarter, up", 2, 90, 0, 1, {1.1, 1.5}, "red");
        row("lying down, along", 2, 0, 0, 0.5, {1.1, 0.2}, "blue");
        row("lying down and turned", 2, 90, 0, 0.5, {0.5, 0.6}, "red");
    }

    void placement()
    {
        QFETCH(double, width);
        QFETCH(double, rotation);
        QFETCH(double, offset);
        QFETCH(double, tilt);
        QFETCH(QPointF, point);
        const auto appearance = striped();
        const auto texture = appearance->GetDiffuseTexture();
        texture->SetProperty("scale", kiv::MakePropertyValue(CVec2<float>(float(width), 1)));
        texture->SetProperty("offset", kiv::MakePropertyValue(CVec2<float>(float(offset), 0)));
        texture->SetProperty("rotation", kiv::MakePropertyValue(float(rotation)));
        QTEST(nameOf(at(painted(*appearance, tilt), point)), "colour");
    }

    void fallsBackToColour()
    {
        const auto appearance = striped();
        appearance->GetDiffuseTexture()->SetTextureFile("not there.png");
        QCOMPARE(painted(*appearance, 1).pixelColor(100, 100), QColor(Qt::green));
    }

private:
    /// Left half red, right half blue.
    kiv::CAppearanceInstancePtr striped()
    {
        QImage image(64, 64, QImage::Format_RGB32);
        image.fill(Qt::red);
        QPainter(&image).fillRect(32, 0, 32, 64, Qt::blue);
        const QString file = m_fixture.path("striped.png");
        image.save(file);
        const auto appearance = m_fixture.library().CreateMaterial("Generic", L"striped");
        appearance->SetUseDiffuseTexture(true);
        appearance->SetDiffuse({0, 1, 0, 1});
        appearance->GetDiffuseTexture()->SetTextureFile(file.toLocal8Bit().toStdString());
        return appearance;
    }

    QImage painted(const kiv::CAppearanceInstance& appearance, double tilt)
    {
        const ElevationScale scale{PixelsPerMetre, Origin};
        m_fill.look(appearance, scale, tilt);
        if (!QTest::qWaitFor([this] { return m_textures.isIdle(); }))
            qFatal("the texture does not arrive");
        QImage image(200, 200, QImage::Format_RGB32);
        QPainter(&image).fillRect(image.rect(), m_fill.look(appearance, scale, tilt).brush);
        return image;
    }

    HostFixture m_fixture;
    TextureCache m_textures;
    MaterialFill m_fill{m_fixture.manager(), m_textures};
};

MATERIAL_TEST_MAIN(TestMaterialFill)
#include "TestMaterialFill.moc"
