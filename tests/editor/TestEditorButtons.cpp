#include <ColorButton.h>
#include <ImagePreviewerCtrl.h>

#include <LibraryFixture.h>
#include <MaterialTest.h>

#include <QColorDialog>
#include <QFileDialog>
#include <QLineEdit>
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
    void colorIsAnnouncedOnce();
    void colorNames();
    void choosesColor();
    void paintsThumbnail();
    void choosesImage();
    void keepsTheImageOtherwise_data();
    void keepsTheImageOtherwise();

private:
    LibraryFixture m_fixture;
};

void TestEditorButtons::colorIsAnnouncedOnce()
{
    QColorButton button;
    QSignalSpy changed(&button, SIGNAL(colorChanged()));
    button.setColor(QColor(254, 127, 0));
    button.setColor(QColor(254, 127, 0));
    QCOMPARE(changed.count(), 1);
    const QImage icon = button.icon().pixmap(16, 16).toImage();
    QCOMPARE(icon.size(), QSize(16, 16));
    QCOMPARE(icon.pixelColor(8, 8), QColor(254, 127, 0));
}

void TestEditorButtons::colorNames()
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

void TestEditorButtons::choosesColor()
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

void TestEditorButtons::paintsThumbnail()
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

void TestEditorButtons::choosesImage()
{
    m_fixture.write("textures/old.png", makePicture(Qt::red, "PNG"));
    m_fixture.write("textures/new.png", makePicture(Qt::blue, "PNG"));
    const QStringList before = QDir::temp().entryList(QDir::Files);
    CImagePreviewerCtrl thumbnail;
    thumbnail.SetDefaultFolder(m_fixture.path("textures").toStdString());
    thumbnail.resize(40, 40);
    thumbnail.show();
    QSignalSpy changed(&thumbnail, SIGNAL(ChangeImageFile()));
    QStringList seen;
    QStringList filters;
    const auto choose = [&](const char* file) {
        return [&, file](QFileDialog& dialog) {
            seen += dialog.windowTitle() + '|' + QDir(m_fixture.path("")).relativeFilePath(dialog.directory().path());
            filters = dialog.nameFilters();
            auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
            name->setText(m_fixture.path(file));
            QTest::keyClick(name, Qt::Key_Return);
        };
    };
    ModalMeeting<QFileDialog> byMouse(choose("textures/old.png"));
    QTest::mouseClick(&thumbnail, Qt::LeftButton);
    QCOMPARE(thumbnail.GetImage(), m_fixture.path("textures/old.png"));
    thumbnail.SetDefaultFolder("/");
    ModalMeeting<QFileDialog> byKey(choose("textures/new.png"));
    QTest::keyClick(&thumbnail, Qt::Key_Space);
    QCOMPARE(thumbnail.GetImage(), m_fixture.path("textures/new.png"));
    QCOMPARE(thumbnail.grab().toImage().pixelColor(20, 20), QColor(Qt::blue));
    QCOMPARE(changed.count(), 2);
    QCOMPARE(seen, QStringList({"Choose Image|textures", "Choose Image|textures"}));
    QCOMPARE(filters.size(), 4);
    QCOMPARE(QDir::temp().entryList(QDir::Files), before);
}

void TestEditorButtons::keepsTheImageOtherwise_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("accepts");
    QTest::newRow("cancelled") << makePicture(Qt::blue, "PNG") << false;
    QTest::newRow("no picture") << QByteArray("text") << true;
    QTest::newRow("empty") << QByteArray() << true;
}

void TestEditorButtons::keepsTheImageOtherwise()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, accepts);
    m_fixture.write("textures/old.png", makePicture(Qt::red, "PNG"));
    m_fixture.write("textures/other.png", content);
    CImagePreviewerCtrl thumbnail;
    thumbnail.SetImage(m_fixture.path("textures/old.png"));
    QSignalSpy changed(&thumbnail, SIGNAL(ChangeImageFile()));
    ModalMeeting<QFileDialog> meeting([&](QFileDialog& dialog) {
        dialog.selectFile(m_fixture.path("textures/other.png"));
        QTest::keyClick(&dialog, accepts ? Qt::Key_Return : Qt::Key_Escape);
    });
    thumbnail.OnChooseImage();
    QVERIFY(meeting.met);
    QCOMPARE(thumbnail.GetImage(), m_fixture.path("textures/old.png"));
    QCOMPARE(changed.count(), 0);
}

MATERIAL_TEST_MAIN(TestEditorButtons)
#include "TestEditorButtons.moc"
