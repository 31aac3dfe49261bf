// What is seen on the screen where a viewer shows its picture, whatever happens to the widget that it was given.
#include <MaterialTest.h>

#include <kiv/Viewer.h>

#include <QApplication>
#include <QImage>
#include <QMenu>
#include <QMouseEvent>
#include <QPixmap>
#include <QScreen>
#include <QWidget>
#include <QWindow>

namespace {

const QColor Around(0, 160, 0);
const QColor Shown(200, 30, 90);
const QColor Other(20, 60, 220);

/// The widget that a viewer is given.
class Host : public QWidget {
public:
    Host(bool paintsOnScreen, QWidget* parent) : QWidget(parent), m_paintsOnScreen(paintsOnScreen)
    {
        setAttribute(Qt::WA_PaintOnScreen, paintsOnScreen);
        setAttribute(Qt::WA_NoSystemBackground);
        setFocusPolicy(Qt::WheelFocus);
        setGeometry(40, 30, 160, 120);
    }

    void open()
    {
        viewer = std::make_unique<kiv::CViewer>(winId());
        viewer->GetOptions().SetViewAxesEnabled(false);
        setColor(Shown);
    }
    void setColor(const QColor& color) const { viewer->SetBackgroundColor({color.red(), color.green(), color.blue()}); }

    QPaintEngine* paintEngine() const override { return m_paintsOnScreen ? nullptr : QWidget::paintEngine(); }

    std::unique_ptr<kiv::CViewer> viewer;
    int presses = 0;

protected:
    void mousePressEvent(QMouseEvent*) override { ++presses; }

private:
    bool m_paintsOnScreen;
};

void fill(QWidget& widget, const QColor& color)
{
    QPalette palette = widget.palette();
    palette.setColor(QPalette::Window, color);
    widget.setPalette(palette);
    widget.setAutoFillBackground(true);
}

/// A green window, and a viewer in it that shows red.
struct Scene {
    explicit Scene(bool paintsOnScreen)
    {
        fill(window, Around);
        window.setGeometry(100, 100, 400, 300);
        host = new Host(paintsOnScreen, &window);
    }
    ~Scene() { delete host; }

    void open()
    {
        window.show();
        host->open();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
    }

    QWidget window;
    QPointer<Host> host;
};

/// What is seen of a part of the widget, as far as it lies on the screen.
QImage seen(const QWidget& widget, const QRect& part)
{
    QScreen* screen = QGuiApplication::primaryScreen();
    const QRect place = part.translated(widget.mapToGlobal(QPoint())) & screen->geometry();
    if (place.isEmpty())
        return {};
    return screen->grabWindow(0, place.x(), place.y(), place.width(), place.height())
        .toImage()
        .convertToFormat(QImage::Format_RGB32);
}

QImage plain(const QSize& size, const QColor& color)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

bool isPlain(const QImage& image, const QColor& color)
{
    return image.isNull() || image == plain(image.size(), color);
}

bool shows(const QWidget& widget, const QRect& part, const QColor& color)
{
    return QTest::qWaitFor([&] { return isPlain(seen(widget, part), color); });
}

bool shows(const QWidget& widget, const QColor& color = Shown)
{
    return shows(widget, widget.rect(), color);
}

}  // namespace

class TestViewerPresenting : public MaterialTest {
    Q_OBJECT

private slots:
    void initTestCase_data()
    {
        QTest::addColumn<bool>("paintsOnScreen");
        QTest::newRow("plain") << false;
        QTest::newRow("on screen") << true;
    }

    void fillsTheWidget()
    {
        QFETCH_GLOBAL(bool, paintsOnScreen);
        Scene scene(paintsOnScreen);
        scene.open();
        QVERIFY(shows(*scene.host));
        scene.host->setColor(Other);
        QVERIFY(shows(*scene.host, Other));
        QCOMPARE(scene.host->viewer->GetReason(), std::string());
    }

    void leavesNoHole()
    {
        QFETCH_GLOBAL(bool, paintsOnScreen);
        Scene scene(paintsOnScreen);
        scene.open();
        QVERIFY(shows(*scene.host));
        scene.host->hide();
        QVERIFY(shows(*scene.host, Around));
        scene.host->setColor(Other);
        scene.host->show();
        QVERIFY(shows(*scene.host, Other));
        const QRect place = scene.host->geometry();
        scene.host->move(180, 150);
        QVERIFY(shows(*scene.host, Other));
        QVERIFY(shows(scene.window, QRect(place.topLeft(), QSize(100, 100)), Around));
        const QRect last = scene.host->geometry();
        delete scene.host;
        QVERIFY(shows(scene.window, last, Around));
    }

    void followsTheWidget()
    {
        QFETCH_GLOBAL(bool, paintsOnScreen);
        Scene scene(paintsOnScreen);
        scene.open();
        for (const QSize& size : {QSize(300, 200), QSize(30, 20), QSize(1, 1), QSize(0, 50), QSize(250, 60)}) {
            scene.host->resize(size);
            QVERIFY(shows(*scene.host));
            QVERIFY(shows(scene.window, QRect(40, 30 + size.height(), 300, 5), Around));
        }
    }

    void movesToOtherWindows()
    {
        QFETCH_GLOBAL(bool, paintsOnScreen);
        Scene scene(paintsOnScreen);
        scene.open();
        Host& host = *scene.host;
        QVERIFY(shows(host));
        QWidget second;
        fill(second, Qt::yellow);
        second.setGeometry(600, 300, 300, 200);
        second.show();
        host.setParent(&second);
        host.show();
        QVERIFY(shows(host));
        QVERIFY(shows(scene.window, Around));

        // A window of its own and no more, before a window manager sees it: plain widgets, too, get lost when one that
        // a window manager has is taken back.
        host.setParent(nullptr);
        QVERIFY(host.isWindow() && host.winId());
        host.setColor(Other);
        host.setParent(&scene.window);
        host.setGeometry(10, 10, 100, 100);
        host.show();
        QVERIFY(shows(host, Other));
        QVERIFY(shows(second, Qt::yellow));

        host.setWindowFlag(Qt::Window);
        host.setGeometry(700, 500, 200, 150);
        host.show();
        QVERIFY(QTest::qWaitForWindowExposed(&host));
        QVERIFY(shows(host, Other));
        host.setColor(Shown);
        QVERIFY(shows(host));
    }

    void liesBelowWhatLiesAbove()
    {
        QFETCH_GLOBAL(bool, paintsOnScreen);
        Scene scene(paintsOnScreen);
        QWidget early(scene.host);  // the picture comes over it
        fill(early, Qt::yellow);
        early.setGeometry(0, 0, 20, 20);
        QWidget sibling(&scene.window);
        fill(sibling, Other);
        sibling.setGeometry(0, 0, 80, 60);
        scene.open();
        QVERIFY(shows(sibling, Other));
        QVERIFY(shows(*scene.host, QRect(50, 40, 100, 70), Shown));
        sibling.lower();
        QVERIFY(shows(*scene.host));
        sibling.raise();
        QVERIFY(shows(sibling, Other));
        sibling.hide();
        QVERIFY(shows(*scene.host));

        QWidget late(scene.host);
        fill(late, Other);
        late.setGeometry(100, 50, 50, 50);
        late.show();
        QVERIFY(shows(late, Other));
        QVERIFY(shows(*scene.host, QRect(0, 0, 90, 120), Shown));
        late.winId();
        QVERIFY(shows(late, Other));
        late.hide();
        QVERIFY(shows(*scene.host));

        QMenu menu;
        menu.addAction("A choice");
        menu.popup(scene.host->mapToGlobal({20, 20}));
        QVERIFY(QTest::qWaitForWindowExposed(&menu));
        QVERIFY(QTest::qWaitFor([&] { return !isPlain(seen(menu, menu.rect()), Shown); }));
        menu.close();
        QVERIFY(shows(*scene.host));
    }

    void takesNoInput()
    {
        QFETCH_GLOBAL(bool, paintsOnScreen);
        Scene scene(paintsOnScreen);
        scene.open();
        QVERIFY(shows(*scene.host));
        for (const QWidget* child : scene.host->findChildren<QWidget*>())
            QVERIFY(child->testAttribute(Qt::WA_TransparentForMouseEvents));
        for (const QWindow* window : QGuiApplication::allWindows()) {
            if (window != scene.window.windowHandle() && window != scene.host->windowHandle())
                QVERIFY(window->flags() & Qt::WindowTransparentForInput);
        }
        QTest::mouseClick(scene.host->windowHandle(), Qt::LeftButton, {}, {20, 20});
        QCOMPARE(scene.host->presses, 1);
    }

    // What is made for somebody else is what is there now, not what was on the screen once.
    void paintsElsewhere()
    {
        QFETCH_GLOBAL(bool, paintsOnScreen);
        Scene scene(paintsOnScreen);
        scene.host->open();
        const auto grabbed = [&] { return scene.host->grab().toImage().convertToFormat(QImage::Format_RGB32); };
        const auto all = [&](const QColor& color) { return plain(scene.host->size(), color); };
        QCOMPARE(grabbed(), all(Shown));
        scene.window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&scene.window));
        QVERIFY(shows(*scene.host));
        for (const QColor& color : {Other, Shown}) {
            scene.host->setColor(color);
            QCOMPARE(grabbed(), all(color));
            QCOMPARE(scene.window.grab(scene.host->geometry()).toImage().convertToFormat(QImage::Format_RGB32),
                     all(color));
        }
        scene.host->hide();
        scene.host->setColor(Other);
        QCOMPARE(grabbed(), all(Other));
    }

    void drawsWhenNeeded()
    {
        QFETCH_GLOBAL(bool, paintsOnScreen);
        Scene scene(paintsOnScreen);
        scene.open();
        QVERIFY(shows(*scene.host));
        const kiv::CViewer& viewer = *scene.host->viewer;
        // Whatever comes after the colour is on the screen would come within these rounds.
        const auto settle = [&] {
            for (int round = 0; round < 20; ++round) {
                seen(*scene.host, scene.host->rect());
                QCoreApplication::processEvents();
            }
        };
        settle();
        unsigned before = viewer.GetFrameCount();
        settle();
        QCOMPARE(viewer.GetFrameCount(), before);
        for (int i = 0; i < 100; ++i)
            scene.host->setColor(i % 2 ? Shown : Other);
        QVERIFY(QTest::qWaitFor([&] { return viewer.GetFrameCount() > before; }));
        settle();
        QCOMPARE(viewer.GetFrameCount(), before + 1);
        scene.host->hide();
        settle();
        before = viewer.GetFrameCount();
        scene.host->setColor(Other);
        scene.host->resize(200, 150);
        settle();
        QCOMPARE(viewer.GetFrameCount(), before);
        scene.host->show();
        QVERIFY(shows(*scene.host, Other));
    }

    void doesNotFlicker()
    {
        QFETCH_GLOBAL(bool, paintsOnScreen);
        Scene scene(paintsOnScreen);
        scene.open();
        QVERIFY(shows(*scene.host));
        int bad = 0;
        for (int step = 0; step < 200; ++step) {
            const int side = 60 + step * 37 % 150;
            scene.host->resize(side, side);
            for (int round = 0; round < 3; ++round) {
                QCoreApplication::processEvents();
                const QImage now = seen(*scene.host, scene.host->rect());
                // The window system may still be busy with the size before.
                for (int i = 0; i < qMin(now.width(), now.height()); ++i) {
                    // Where the window has not grown yet there is still what was around it.
                    const QRgb pixel = now.pixel(i, i);
                    bad += pixel != Shown.rgb() && pixel != Around.rgb();
                }
            }
        }
        QCOMPARE(bad, 0);
    }
};

MATERIAL_TEST_MAIN(TestViewerPresenting)
#include "TestViewerPresenting.moc"
