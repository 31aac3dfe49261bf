#include <AppearancePreviewerCtrl.h>
#include <ColorButton.h>
#include <ImagePreviewerCtrl.h>

#include <LibraryFixture.h>
#include <MaterialTest.h>

#include <QColorDialog>
#include <QDropEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMimeData>
#include <QTimer>

#include <functional>

namespace {

/// Meets the next modal window of a type once it is on the screen.
template <typename Window>
class ModalMeeting {
public:
    explicit ModalMeeting(std::function<void(Window&)> meet)
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this, meet] {
            auto* window = qobject_cast<Window*>(QApplication::activeModalWidget());
            if (!window || !window->isVisible())
                return;
            m_timer.stop();
            met = true;
            meet(*window);
        });
        m_timer.start(0);
    }
    bool met = false;

private:
    QTimer m_timer;
};

}  // namespace

/// The colour button and the thumbnail of a picture, with the dialogs that they open.
class TestEditorButtons : public MaterialTest {
    Q_OBJECT

private slots:
    // Hosts and derived widgets connect by text: a signature that is nearly the same is not there.
    void signaturesAreKnownByText()
    {
        const std::pair<const QMetaObject*, QList<const char*>> classes[] = {
            {&CAppearancePreviewerCtrl::staticMetaObject,
             {SIGNAL(SaveAppearance(const kiv::CAppearanceInstancePtr&)),
              SIGNAL(InitcurrentLod(CAppearanceLibraryManager::EnShaderLevelOfDetail)),
              SLOT(currentIndexChanged(const QString&)), SLOT(currentLodChanged(const QString&)),
              SLOT(OnChangeBackgroundColor()), SLOT(OnShowBrowser(bool)), SLOT(OnSaveAppearance())}},
            {&CImagePreviewerCtrl::staticMetaObject,
             {SIGNAL(ChangeImageFile()), SIGNAL(Clicked()), SLOT(OnChooseImage())}},
            {&QColorButton::staticMetaObject, {SIGNAL(colorChanged()), SLOT(slotChangeColor())}}};
        for (const auto& [meta, methods] : classes) {
            for (const char* text : methods) {
                const QByteArray signature = QMetaObject::normalizedSignature(text + 1);
                const int index = meta->indexOfMethod(signature);
                QVERIFY2(index >= meta->methodOffset(), text);
                QCOMPARE(meta->method(index).methodType() == QMetaMethod::Signal, *text == '0' + QSIGNAL_CODE);
                QCOMPARE(meta->method(index).access(), QMetaMethod::Public);
            }
        }
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
        QColor offered;
        ModalMeeting<QColorDialog> chosen([&](QColorDialog& dialog) {
            offered = dialog.currentColor();
            dialog.setCurrentColor(QColor(12, 34, 56));
            dialog.accept();
        });
        QTest::mouseClick(&button, Qt::LeftButton);
        QCOMPARE(offered, QColor(Qt::red));
        QCOMPARE(button.color(), QColor(12, 34, 56));
        QCOMPARE(button.text(), QString("RGB(12,34,56)"));
        QCOMPARE(changed.count(), 1);
    }

    void paintsThumbnail()
    {
        m_fixture.write("textures/green.png", makePicture(Qt::green, "PNG"));
        CImagePreviewerCtrl thumbnail;
        QSignalSpy changed(&thumbnail, SIGNAL(ChangeImageFile()));
        thumbnail.resize(60, 30);
        const auto corners = [&] {
            const QImage picture = thumbnail.grab().toImage();
            return QList<QColor>{picture.pixelColor(2, 2), picture.pixelColor(57, 27)};
        };
        QCOMPARE(corners(), QList<QColor>({Qt::gray, Qt::gray}));
        const QString file = m_fixture.path("textures/green.png");
        thumbnail.SetImage(file);
        QCOMPARE(corners(), QList<QColor>({Qt::green, Qt::green}));
        QCOMPARE(thumbnail.toolTip(), file);
        thumbnail.SetImage(m_fixture.path("textures/none.png"));
        QCOMPARE(corners(), QList<QColor>({Qt::gray, Qt::gray}));
        QCOMPARE(changed.count(), 0);
    }

    void choosesImage()
    {
        for (const char* file : {"textures/old.png", "favorites/new.png"})
            m_fixture.write(file, makePicture(QString(file).contains("new") ? Qt::blue : Qt::red, "PNG"));
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
        QCOMPARE(clicked.count(), 2);
        QTest::mouseClick(&thumbnail, Qt::RightButton);
        QTest::mousePress(&thumbnail, Qt::LeftButton);
        QTest::mouseRelease(&thumbnail, Qt::LeftButton, {}, QPoint(60, 20));
        QTest::mouseRelease(&thumbnail, Qt::LeftButton);
        QTest::keyClick(&thumbnail, Qt::Key_A);
        QCOMPARE(clicked.count(), 2);
    }

    void takesADroppedFile_data()
    {
        m_fixture.write("textures/dropped.png", makePicture(Qt::blue, "PNG"));
        m_fixture.write("textures/page.png", "<html>");
        const QUrl picture = QUrl::fromLocalFile(m_fixture.path("textures/dropped.png"));
        const QUrl page = QUrl::fromLocalFile(m_fixture.path("textures/page.png"));
        const auto row = testColumns<QList<QUrl>, bool>("urls", "taken");
        row("picture", {picture}, true);
        row("no picture", {page}, false);
        row("several", {picture, picture}, false);
        row("elsewhere", {QUrl("http://localhost/dropped.png")}, false);
        row("nothing", {}, false);
    }

    void takesADroppedFile()
    {
        QFETCH(QList<QUrl>, urls);
        QFETCH(bool, taken);
        CImagePreviewerCtrl thumbnail;
        QSignalSpy changed(&thumbnail, SIGNAL(ChangeImageFile()));
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QApplication::sendEvent(&thumbnail, &enter);
        QCOMPARE(enter.isAccepted(), taken);
        QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&thumbnail, &drop);
        QCOMPARE(changed.count(), taken ? 1 : 0);
        QCOMPARE(thumbnail.GetImage(), taken ? m_fixture.path("textures/dropped.png") : QString());
    }

    void keepsTheImageOtherwise()
    {
        m_fixture.write("textures/old.png", makePicture(Qt::red, "PNG"));
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

private:
    LibraryFixture m_fixture;
};

MATERIAL_TEST_MAIN(TestEditorButtons)
#include "TestEditorButtons.moc"
