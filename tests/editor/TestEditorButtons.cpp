#include "EditorFixture.h"

#include <AppearancePreviewerCtrl.h>
#include <ColorButton.h>
#include <ColorCtrl.h>
#include <DynamicWidget.h>
#include <GroupBoxCtrl.h>
#include <ImageCtrl.h>
#include <ImagePreviewerCtrl.h>
#include <KnownByText.h>
#include <LineEditCtrl.h>
#include <MaterialTest.h>
#include <ModalMeeting.h>
#include <SpinBoxCtrl.h>
#include <TextureEditorDlg.h>

#include <QColorDialog>
#include <QFileDialog>
#include <QLineEdit>

/// The colour button and the thumbnail of a picture, with the dialogs that they open; and the names of the editor.
class TestEditorButtons : public MaterialTest {
    Q_OBJECT

private slots:
    void signaturesAreKnownByText()
    {
        const char* const change = SIGNAL(ChangeProperty(const kiv::String&, const kiv::CPropertyValuePtr&));
        checkKnownByText(CSpinBoxCtrl::staticMetaObject, {change, SLOT(OnValueChanged(double))});
        checkKnownByText(CColorCtrl::staticMetaObject, {change, SLOT(OnValueChanged())});
        checkKnownByText(CGroupBoxCtrl::staticMetaObject, {change, SLOT(OnValueChanged(bool))});
        checkKnownByText(CLineEditCtrl::staticMetaObject, {change, SLOT(OnValueChanged(const QString&))});
        checkKnownByText(CImageCtrl::staticMetaObject, {change, SIGNAL(GenerateNormalMap(CImageCtrl*)),
                                                        SLOT(OnValueChanged()), SLOT(OnClickGenNormalMapButton())});
        checkKnownByText(CImageWidget::staticMetaObject, {SIGNAL(ShowTextureEditor(const QString&)),
                                                          SLOT(OnOpenTextureEditor()), SLOT(OnChangeImageFile())});
        checkKnownByText(CImagePreviewerCtrl::staticMetaObject, {SIGNAL(ChangeImageFile()), SLOT(OnChooseImage())});
        checkKnownByText(QColorButton::staticMetaObject, {SIGNAL(colorChanged()), SLOT(slotChangeColor())});
        checkKnownByText(CAppearancePreviewerCtrl::staticMetaObject,
                         {SIGNAL(SaveAppearance(const kiv::CAppearanceInstancePtr&)),
                          SIGNAL(InitcurrentLod(CAppearanceLibraryManager::EnShaderLevelOfDetail)),
                          SLOT(currentIndexChanged(const QString&)), SLOT(currentLodChanged(const QString&)),
                          SLOT(OnChangeBackgroundColor()), SLOT(OnShowBrowser(bool)), SLOT(OnSaveAppearance())});
        checkKnownByText(CDynamicWidget::staticMetaObject,
                         {SIGNAL(ChangeAppearance(const kiv::String&)), SIGNAL(TransformEditedData(const kiv::String&)),
                          SLOT(OnPropertyChanged(const kiv::String&, const kiv::CPropertyValuePtr&)),
                          SLOT(OnImageChanged(const kiv::String&, const kiv::CPropertyValuePtr&)),
                          SLOT(OnShowTextureEditor(const QString&)), SLOT(OnGenNormalMap(CImageCtrl*))});
        checkKnownByText(CAppearanceDynamicEditor::staticMetaObject,
                         {SLOT(OnChangeAppearance(const kiv::String&)), SLOT(TransformEditedData(const kiv::String&))});
        checkKnownByText(CAppearanceEditorWidget::staticMetaObject,
                         {SIGNAL(OnAppearancePropertyChanged(const kiv::CAppearanceInstancePtr&, const kiv::String&)),
                          SIGNAL(OnTransformEditedData(const kiv::String&))});
        checkKnownByText(CTextureEditorDlg::staticMetaObject,
                         {SLOT(OnChangeRotation(double)), SLOT(OnChangeOffsetX(double)), SLOT(OnChangeOffsetY(double)),
                          SLOT(OnChangeSampleWidth(double)), SLOT(OnChangeSampleHeight(double)), SLOT(OnFilpH(bool)),
                          SLOT(OnFilpV(bool)), SLOT(OnApplyTexture())});
    }

    void colorIsAnnouncedOnce()
    {
        QColorButton button;
        QSignalSpy changed(&button, SIGNAL(colorChanged()));
        button.setColor(QColor(254, 127, 0));
        button.setColor(QColor(254, 127, 0));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(button.icon().availableSizes(), QList<QSize>{QSize(16, 16)});
        QCOMPARE(button.icon().pixmap(16, 16).toImage().pixelColor(8, 8), QColor(254, 127, 0));
    }

    void colorNames()
    {
        QColorButton button;
        button.setText("RGB(1,2,3)");
        button.setShowName(false);
        button.setShowToolTip(false);
        button.setColor(Qt::red);
        QCOMPARE(button.text() + button.toolTip(), QString("RGB(1,2,3)"));
        button.setShowName(true);
        button.setShowToolTip(true);
        QCOMPARE(button.text() + button.toolTip(), QString("#ff0000#ff0000"));
        button.setColor(Qt::blue);
        QCOMPARE(button.text() + button.toolTip(), QString("#0000ff#0000ff"));
        button.setShowName(false);
        button.setShowToolTip(false);
        QCOMPARE(button.text() + button.toolTip(), QString("RGB(1,2,3)"));
    }

    void choosesColor()
    {
        QColorButton button;
        button.setColor(Qt::red);
        button.show();
        QSignalSpy changed(&button, SIGNAL(colorChanged()));
        ModalMeeting<QColorDialog> cancelled([](QColorDialog& dialog) {
            dialog.setCurrentColor(Qt::green);
            dialog.reject();
        });
        QTest::mouseClick(&button, Qt::LeftButton);
        QVERIFY(cancelled.met);
        QCOMPARE(button.color(), QColor(Qt::red));
        QCOMPARE(chooseColor(button, QColor(12, 34, 56)), QColor(Qt::red));
        QCOMPARE(button.color(), QColor(12, 34, 56));
        QCOMPARE(button.text(), QString("RGB(12,34,56)"));
        QCOMPARE(changed.count(), 1);
    }

    void paintsThumbnail()
    {
        CImagePreviewerCtrl thumbnail;
        QSignalSpy changed(&thumbnail, SIGNAL(ChangeImageFile()));
        thumbnail.resize(60, 30);
        const auto corners = [&] {
            const QImage picture = thumbnail.grab().toImage();
            return QList<QColor>{picture.pixelColor(2, 2), picture.pixelColor(57, 27)};
        };
        QCOMPARE(corners(), QList<QColor>({Qt::gray, Qt::gray}));
        const QString file = m_fixture.path("textures/old.png");
        thumbnail.SetImage(file);
        QCOMPARE(corners(), QList<QColor>({Qt::red, Qt::red}));
        QCOMPARE(thumbnail.toolTip(), file);
        thumbnail.SetImage(m_fixture.path("textures/none.png"));
        QCOMPARE(corners(), QList<QColor>({Qt::gray, Qt::gray}));
        QCOMPARE(changed.count(), 0);
    }

    void choosesImage()
    {
        m_fixture.write("favorites/new.png", makePicture(Qt::blue, "PNG"));
        const QStringList before = QDir::temp().entryList(QDir::Files);
        CImagePreviewerCtrl thumbnail;
        thumbnail.resize(40, 40);
        QSignalSpy changed(&thumbnail, SIGNAL(ChangeImageFile()));
        QStringList seen, filters;
        const auto choose = [&](CImagePreviewerCtrl& in, const QString& file) {
            in.SetDefaultFolder(m_fixture.path("textures").toStdString());
            ModalMeeting<QFileDialog> meeting([&](QFileDialog& dialog) {
                seen +=
                    dialog.windowTitle() + '|' + QDir(m_fixture.path("")).relativeFilePath(dialog.directory().path());
                filters = dialog.nameFilters();
                auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
                name->setText(m_fixture.path(file));
                QTest::keyClick(name, Qt::Key_Return);
            });
            in.OnChooseImage();
            QCOMPARE(in.GetImage(), m_fixture.path(file));
        };
        choose(thumbnail, "favorites/new.png");
        QCOMPARE(thumbnail.grab().toImage().pixelColor(20, 20), QColor(Qt::blue));
        choose(thumbnail, "textures/old.png");
        choose(thumbnail, "favorites/new.png");
        CImagePreviewerCtrl other;
        choose(other, "textures/old.png");
        QCOMPARE(changed.count(), 3);
        // At first in the default folder, then where its image is, and in any other where the last one was found.
        QCOMPARE(seen, QStringList({"Choose Image|textures", "Choose Image|favorites", "Choose Image|textures",
                                    "Choose Image|favorites"}));
        QCOMPARE(filters, QStringList({"(*.jpg *.jpeg *.png *.bmp)", "JPEG Files(*.jpg *.jpeg)", "PNG Files(*.png)",
                                       "BMP Files(*.bmp)"}));
        QCOMPARE(QDir::temp().entryList(QDir::Files), before);
    }

    void announcesClicks()
    {
        CImagePreviewerCtrl thumbnail;
        thumbnail.resize(40, 40);
        QSignalSpy clicked(&thumbnail, SIGNAL(Clicked()));
        QTest::mouseClick(&thumbnail, Qt::LeftButton);
        QTest::keyClick(&thumbnail, Qt::Key_Space);
        QTest::keyClick(&thumbnail, Qt::Key_Return);
        QCOMPARE(clicked.count(), 3);
        QTest::mouseClick(&thumbnail, Qt::RightButton);
        QTest::mousePress(&thumbnail, Qt::LeftButton);
        QTest::mouseRelease(&thumbnail, Qt::LeftButton, {}, QPoint(60, 20));
        QTest::mouseRelease(&thumbnail, Qt::LeftButton);
        QTest::keyClick(&thumbnail, Qt::Key_A);
        QCOMPARE(clicked.count(), 3);
    }

    // Answered as a copy whatever was proposed: after a move the user's own file would be deleted.
    void takesADroppedFile_data()
    {
        const auto url = [&](const char* file) { return QUrl::fromLocalFile(m_fixture.path(file)); };
        const QUrl picture = url("textures/new.png");
        const auto row = testColumns<QList<QUrl>, int, bool, bool>("urls", "offered", "isAnswered", "isTaken");
        row("picture", {picture}, Qt::CopyAction, true, true);
        row("picture to be moved", {picture}, Qt::CopyAction | Qt::MoveAction, true, true);
        row("picture that can only be moved", {picture}, Qt::MoveAction, false, false);
        row("the present one", {url("textures/old.png")}, Qt::CopyAction, true, false);
        row("the present one by another path", {url("textures/../textures/old.png")}, Qt::CopyAction, true, false);
        row("no picture", {url("textures/page.png")}, Qt::CopyAction, false, false);
        row("several", {picture, picture}, Qt::CopyAction, false, false);
        row("elsewhere", {QUrl("http://localhost/new.png")}, Qt::CopyAction, false, false);
        row("nothing", {}, Qt::CopyAction, false, false);
    }

    void takesADroppedFile()
    {
        QFETCH(QList<QUrl>, urls);
        QFETCH(int, offered);
        QFETCH(bool, isAnswered);
        QFETCH(bool, isTaken);
        CImagePreviewerCtrl thumbnail;
        thumbnail.SetImage(m_fixture.path("textures/old.png"));
        QSignalSpy changed(&thumbnail, SIGNAL(ChangeImageFile()));
        QCOMPARE(dropUrls(thumbnail, urls, Qt::DropActions(offered)), isAnswered ? Qt::CopyAction : Qt::IgnoreAction);
        QCOMPARE(changed.count(), isTaken ? 1 : 0);
        QCOMPARE(thumbnail.GetImage(), m_fixture.path(isTaken ? "textures/new.png" : "textures/old.png"));
    }

    void keepsTheImageOtherwise()
    {
        CImagePreviewerCtrl thumbnail;
        thumbnail.SetImage(m_fixture.path("textures/old.png"));
        QSignalSpy changed(&thumbnail, SIGNAL(ChangeImageFile()));
        const std::pair<QByteArray, Qt::Key> cases[] = {
            {makePicture(Qt::blue, "PNG"), Qt::Key_Escape}, {"text", Qt::Key_Return}, {"", Qt::Key_Return}};
        for (const auto& [content, key] : cases) {
            m_fixture.write("textures/other.png", content);
            ModalMeeting<QFileDialog> meeting([&, pressed = key](QFileDialog& dialog) {
                dialog.selectFile(m_fixture.path("textures/other.png"));
                QTest::keyClick(&dialog, pressed);
            });
            thumbnail.OnChooseImage();
            QVERIFY(meeting.met);
            QCOMPARE(thumbnail.GetImage(), m_fixture.path("textures/old.png"));
            QCOMPARE(changed.count(), 0);
        }
    }

protected:
    void prepare() override
    {
        m_fixture.write("textures/old.png", makePicture(Qt::red, "PNG"));
        m_fixture.write("textures/new.png", makePicture(Qt::blue, "PNG"));
        m_fixture.write("textures/page.png", "<html>");
    }

private:
    LibraryFixture m_fixture;
};

MATERIAL_TEST_MAIN(TestEditorButtons)
#include "TestEditorButtons.moc"
