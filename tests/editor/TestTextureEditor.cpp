#include "EditorFixture.h"

#include <ImageCtrl.h>
#include <ImagePreviewerCtrl.h>
#include <TextureEditorDlg.h>
#include <TextureSceneWidget.h>

#include <MaterialTest.h>
#include <Measured.h>
#include <ModalMeeting.h>

#include <kiv/TextureTransform.h>
#include <kiv/Viewer.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QPainter>
#include <QPushButton>

#include <cmath>

using kiv::CAppearanceInstancePtr;
using kiv::CMatrix3;
using kiv::MakePropertyValue;
using kiv::TextureTransform;
using Pair = kiv::CVec2<float>;

Q_DECLARE_METATYPE(Pair)

namespace {

bool near(const Pair& a, const Pair& b)
{
    return std::abs(a.x - b.x) < 1e-5F && std::abs(a.y - b.y) < 1e-5F;
}

CMatrix3<float> transformOf(const kiv::CAppearanceInstance& texture)
{
    return texture.ValueOr("transform", CMatrix3<float>());
}

}  // namespace

/// Placing a texture: where its points go, the dialog, and what becomes of the placement when it is closed.
class TestTextureEditor : public MaterialTest {
    Q_OBJECT

private slots:
    void init()
    {
        m_fixture = std::make_unique<EditorFixture>();
        // Two colours without any symmetry, so that every placement looks different.
        QImage picture(64, 64, QImage::Format_RGB32);
        picture.fill(Qt::blue);
        QPainter(&picture).fillRect(0, 0, 40, 20, Qt::yellow);
        QVERIFY(picture.save(m_fixture->path("textures/wall.png")));
        m_appearance = m_fixture->add("Generic", "placed");
        m_appearance->SetUseDiffuseTexture(true);
        m_appearance->GetDiffuseTexture()->SetTextureFile("wall.png");
        EditorFixture::place(*m_appearance->GetDiffuseTexture());
    }

    void pointsFollowThePlacement_data()
    {
        const float half = std::sqrt(0.5F);
        const auto row = testColumns<float, Pair, Pair, Pair, Pair>("rotation", "scale", "offset", "place", "shown");
        row("as it is", 0, {1, 1}, {0, 0}, {0.25F, 0.75F}, {0.25F, 0.75F});
        row("size", 0, {2, 4}, {0, 0}, {1, 1}, {0.5F, 0.25F});
        row("offset", 0, {2, 4}, {0.5F, 1}, {0.5F, 1}, {0, 0});
        row("mirrored in width", 0, {-2, 4}, {0, 0}, {1, 1}, {-0.5F, 0.25F});
        row("mirrored in height, with offset", 0, {2, -4}, {0.5F, 1}, {1.5F, 3}, {0.5F, -0.5F});
        // Clockwise: the picture's right-hand side comes to lie below.
        row("quarter turn", 90, {1, 1}, {0, 0}, {0, -1}, {1, 0});
        row("eighth of a turn", 45, {1, 1}, {0, 0}, {half, -half}, {1, 0});
        row("quarter turn back", -90, {1, 1}, {0, 0}, {0, 1}, {1, 0});
        row("turned and sized", 90, {2, 4}, {0, 0}, {4, -2}, {1, 1});
        row("turned and shifted along its own axes", 90, {2, 4}, {1, 0}, {0, -1}, {0, 0});
        row("turned and mirrored", 90, {-2, 4}, {0, 0}, {0, -2}, {-1, 0});
        row("half a turn", 180, {1, 1}, {0.25F, 0}, {-1, -1}, {0.75F, 1});
    }

    void pointsFollowThePlacement()
    {
        QFETCH(Pair, scale);
        QFETCH(Pair, offset);
        QFETCH(Pair, place);
        QFETCH(Pair, shown);
        QFETCH(float, rotation);
        const auto transform = TextureTransform(rotation, scale, offset);
        const Pair at = kiv::PlaceOnTexture(transform, place);
        QVERIFY2(near(at, shown), qPrintable(QString("%1 %2").arg(double(at.x)).arg(double(at.y))));
        for (const float turn : {-360.0F, 360.0F})
            QVERIFY(near(kiv::PlaceOnTexture(TextureTransform(rotation + turn, scale, offset), place), shown));
    }

    void smallSizesAndEntriesAreBounded()
    {
        const std::pair<float, float> factors[] = {{0.005F, 100.0F}, {-0.005F, -100.0F}, {0.0F, 100.0F},
                                                   {-0.0F, -100.0F}, {0.02F, 50.0F},     {-0.02F, -50.0F}};
        for (const auto& [size, factor] : factors) {
            const auto transform = TextureTransform(0, {size, 1}, {0, 0});
            QCOMPARE(transform(0, 0), factor);
            QCOMPARE(TextureTransform(0, {1, size}, {0, 0})(1, 1), factor);
        }
        // What a turn leaves of zero is zero, and what is small is kept.
        QVERIFY(TextureTransform(90, {1, 1}, {0, 0}).m == (std::array<float, 9>{0, -1, 0, 1, 0, 0, 0, 0, 1}));
        QVERIFY(TextureTransform(360, {1, 1}, {0, 0}) == CMatrix3<float>());
        QCOMPARE(TextureTransform(0, {1, 1}, {0.9e-6F, 2e-6F})(0, 2), 0.0F);
        QCOMPARE(TextureTransform(0, {1, 1}, {0.9e-6F, 2e-6F})(1, 2), -2e-6F);
    }

    void dialogShowsThePlacement()
    {
        const auto dialog = openDialog();
        QStringList values;
        for (const char* name : {"rotation", "sampleWidth", "sampleHeight", "offsetX", "offsetY"})
            values += QString::number(number(*dialog, name)->value());
        QCOMPARE(values, QStringList({"30", "2", "3", "0.5", "-1"}));
        QVERIFY(dialog->findChild<QCheckBox*>("checkBox_FlipH")->isChecked());
        QVERIFY(!dialog->findChild<QCheckBox*>("checkBox_FlipV")->isChecked());
        QCOMPARE(dialog->findChild<QComboBox*>("repeatHorizontal")->currentIndex(), 1);
        QCOMPARE(dialog->findChild<QComboBox*>("repeatVertical")->currentIndex(), 2);
    }

    void numbersPlaceTheCopy_data()
    {
        const auto row =
            testColumns<QString, QString, float, Pair, Pair>("control", "typed", "rotation", "scale", "offset");
        row("rotation", "rotation", "-45.5", -45.5F, {-2, 3}, {0.5F, -1});
        row("width keeps its sign", "sampleWidth", "4", 30, {-4, 3}, {0.5F, -1});
        row("height", "sampleHeight", "0.005", 30, {-2, 0.005F}, {0.5F, -1});
        row("offset to the right", "offsetX", "-7.25", 30, {-2, 3}, {-7.25F, -1});
        row("offset upwards", "offsetY", "0.125", 30, {-2, 3}, {0.5F, 0.125F});
    }

    void numbersPlaceTheCopy()
    {
        QFETCH(QString, control);
        QFETCH(QString, typed);
        QFETCH(Pair, scale);
        QFETCH(Pair, offset);
        QFETCH(float, rotation);
        const QByteArray before = m_fixture->document(m_appearance);
        const auto dialog = openDialog();
        typeAnew(*number(*dialog, qPrintable(control)), typed);
        const kiv::CAppearanceInstance& texture = *dialog->GetTexture();
        QCOMPARE(texture.ValueOr("rotation", 0.0F), rotation);
        QVERIFY(texture.ValueOr("scale", Pair()) == scale);
        QVERIFY(texture.ValueOr("offset", Pair()) == offset);
        QVERIFY(transformOf(texture) == TextureTransform(rotation, scale, offset));
        QCOMPARE(m_fixture->document(m_appearance), before);
    }

    void flipsKeepTheSizeShown()
    {
        const auto dialog = openDialog();
        const kiv::CAppearanceInstance& texture = *dialog->GetTexture();
        const auto scale = [&] { return texture.ValueOr("scale", Pair()); };
        auto* vertical = dialog->findChild<QCheckBox*>("checkBox_FlipV");
        QTest::mouseClick(vertical, Qt::LeftButton, {}, QPoint(8, vertical->height() / 2));
        QVERIFY(vertical->isChecked() && scale() == Pair(-2, -3));
        QCOMPARE(number(*dialog, "sampleHeight")->value(), 3.0);
        QTest::keyClick(number(*dialog, "sampleHeight"), Qt::Key_Up);
        QVERIFY(scale() == Pair(-2, -3.01F));
        QTest::keyClick(dialog->findChild<QCheckBox*>("checkBox_FlipH"), Qt::Key_Space);
        QVERIFY(scale() == Pair(2, -3.01F));
        QCOMPARE(number(*dialog, "sampleWidth")->value(), 2.0);
        QVERIFY(transformOf(texture) == TextureTransform(30, {2, -3.01F}, {0.5F, -1}));
    }

    void everyChangeIsSeenInThePreview()
    {
        const auto dialog = openDialog();
        const auto* scene = dialog->findChild<CTextureSceneWidget*>("sceneViewer");
        QTRY_VERIFY(scene->GetViewer() && scene->GetPreviewNode()->GetRenderable());
        const auto picture = [&] {
            constexpr int side = 64;
            return pictureOf(*scene->GetViewer(), side, side);
        };
        for (const char* size : {"sampleWidth", "sampleHeight"})
            typeAnew(*number(*dialog, size), "0.3");  // small enough to be repeated
        QImage seen = picture();
        QVERIFY(!seen.isNull());
        // Mirrored on each side of zero, or clamped, a texture may not be changed by mirroring.
        const std::pair<const char*, Qt::Key> changes[] = {
            {"repeatHorizontal", Qt::Key_Home}, {"repeatVertical", Qt::Key_Home},  {"rotation", Qt::Key_PageUp},
            {"sampleWidth", Qt::Key_PageUp},    {"sampleHeight", Qt::Key_PageUp},  {"offsetX", Qt::Key_PageUp},
            {"offsetY", Qt::Key_PageUp},        {"checkBox_FlipH", Qt::Key_Space}, {"checkBox_FlipV", Qt::Key_Space},
            {"repeatHorizontal", Qt::Key_End},  {"repeatVertical", Qt::Key_End}};
        for (const auto& [name, key] : changes) {
            QTest::keyClick(dialog->findChild<QWidget*>(name), key);
            const QImage now = picture();
            QVERIFY2(now != seen, name);
            seen = now;
        }
        QCOMPARE(dialog->GetTexture()->ValueOr("repeat_h", -1), 2);
        QCOMPARE(dialog->GetTexture()->ValueOr("repeat_v", -1), 2);
    }

    // It may have been computed elsewhere, or from sizes that the boxes round.
    void lookingAtThePlacementKeepsTheStoredTransform()
    {
        const QByteArray before = m_fixture->document(m_appearance);
        m_fixture->edit(m_appearance);
        place([](CTextureEditorDlg& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
        QCOMPARE(m_fixture->document(m_appearance), before);
    }

    void closingInAnyWayKeepsThePlacement_data()
    {
        const auto row = testColumns<int>("way");
        row("button", 0);
        row("escape", 1);
        row("window closed", 2);
        row("file gone meanwhile", 3);
    }

    void closingInAnyWayKeepsThePlacement()
    {
        QFETCH(int, way);
        const QByteArray before = m_fixture->document(m_appearance);
        m_fixture->edit(m_appearance);
        place([&](CTextureEditorDlg& dialog) {
            typeAnew(*number(dialog, "rotation"), "90");
            QTest::keyClick(dialog.findChild<QComboBox*>("repeatVertical"), Qt::Key_Up);
            if (way == 3)
                QVERIFY(QFile::remove(m_fixture->path("textures/wall.png")));
            typeAnew(*number(dialog, "offsetX"), "2");
            QCOMPARE(m_fixture->takeEvents(), QString());
            QCOMPARE(m_fixture->document(m_appearance), before);
            if (way == 1)
                QTest::keyClick(&dialog, Qt::Key_Escape);
            else if (way == 2)
                dialog.close();
            else
                QTest::mouseClick(dialog.findChild<QPushButton*>("pushButtonOk"), Qt::LeftButton);
        });
        QCOMPARE(m_fixture->takeEvents(), QString("record diffuse_texture"));
        const kiv::CAppearanceInstance& texture = *m_appearance->GetDiffuseTexture();
        QCOMPARE(texture.ValueOr("rotation", 0.0F), 90.0F);
        QVERIFY(texture.ValueOr("scale", Pair()) == Pair(-2, 3));
        QVERIFY(texture.ValueOr("offset", Pair()) == Pair(2, -1));
        QCOMPARE(texture.ValueOr("repeat_h", -1), 1);
        QCOMPARE(texture.ValueOr("repeat_v", -1), 1);
        QVERIFY(transformOf(texture) == TextureTransform(90, {-2, 3}, {2, -1}));
        QCOMPARE(texture.GetTextureFile(), kiv::String("wall.png"));
        QCOMPARE(m_fixture->takeBackAll(), QList<QByteArray>{before});
    }

    void nothingIsWrittenIntoTheWrongAppearance_data()
    {
        const auto row = testColumns<int>("meanwhile");
        row("another appearance shown", 0);
        row("texture replaced", 1);
        row("texture removed", 2);
        row("library removed", 3);
        row("library loaded anew", 4);
        row("editor closed", 5);
    }

    void nothingIsWrittenIntoTheWrongAppearance()
    {
        QFETCH(int, meanwhile);
        const auto other = m_fixture->add("Generic", "other");
        other->GetDiffuseTexture()->SetTextureFile("wall.png");
        m_fixture->edit(m_appearance);
        const CAppearanceInstancePtr texture = m_appearance->GetDiffuseTexture();
        QList<CAppearanceInstancePtr> all{m_appearance, other, texture};
        QList<QByteArray> before;
        place([&](CTextureEditorDlg& dialog) {
            const QPointer<CTextureEditorDlg> open(&dialog);
            typeAnew(*number(dialog, "rotation"), "90");
            change(meanwhile, all);
            for (const auto& appearance : all)
                before += m_fixture->document(appearance);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QCOMPARE(!open, meanwhile == 0 || meanwhile == 5);
            if (open)
                QTest::keyClick(open->findChild<QPushButton*>("pushButtonOk"), Qt::Key_Space);
        });
        QList<QByteArray> after;
        for (const auto& appearance : all)
            after += m_fixture->document(appearance);
        QCOMPARE(after, before);
        QCOMPARE(m_fixture->takeEvents(), QString());
    }

protected:
    void finish() override { m_fixture.reset(); }

private:
    std::unique_ptr<CTextureEditorDlg> openDialog()
    {
        const auto texture = m_appearance->GetDiffuseTexture();
        auto dialog =
            std::make_unique<CTextureEditorDlg>(m_fixture->manager(), texture->Clone(texture->GetId()), "mm", nullptr);
        dialog->show();
        return dialog;
    }

    static QDoubleSpinBox* number(const CTextureEditorDlg& dialog, const char* name)
    {
        return dialog.findChild<QDoubleSpinBox*>(name);
    }

    /// Opens the dialog by the thumbnail, as a person does.
    void place(const std::function<void(CTextureEditorDlg&)>& work)
    {
        ModalMeeting<CTextureEditorDlg> meeting(work);
        QTest::mouseClick(&m_fixture->find<CImageCtrl>("diffuse_texture")->GetThumbnail(), Qt::LeftButton);
        QVERIFY(meeting.met);
    }

    void change(int meanwhile, QList<CAppearanceInstancePtr>& all)
    {
        kiv::CAppearanceLibraryManager& manager = m_fixture->manager();
        if (meanwhile == 0)
            m_fixture->editor->SetAppearance(all[1]);
        if (meanwhile == 1)
            m_appearance->SetProperty("diffuse_texture", MakePropertyValue(all[2]->Clone(all[2]->GetId())));
        if (meanwhile == 2)
            m_appearance->RemoveProperty("diffuse_texture");
        if (meanwhile == 3 || meanwhile == 4)
            manager.DeleteUserAppearanceLibrary("Customer Library");
        if (meanwhile == 4) {
            const auto library = std::make_shared<kiv::CAppearanceLibrary>();
            library->SetName("Customer Library");
            library->AddInstance(m_appearance->Clone("placed"));
            all += library->FindInstance("placed");
            manager.AddUserAppearanceLibrary(library);
        }
        if (meanwhile == 5)
            m_fixture->editor.reset();
    }

    std::unique_ptr<EditorFixture> m_fixture;
    CAppearanceInstancePtr m_appearance;
};

MATERIAL_TEST_MAIN(TestTextureEditor)
#include "TestTextureEditor.moc"
