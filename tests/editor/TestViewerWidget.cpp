#include <SceneWidget.h>
#include <TextureSceneWidget.h>
#include <ViewerEvents.h>

#include <MaterialTest.h>

#include <kiv/Viewer.h>

#include <QLabel>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <cmath>
#include <functional>

namespace {

constexpr int Never = 1000000;

/// The window of the widgets that are in no other.
std::unique_ptr<QWidget> s_window;

/// Makes its viewer as soon as events run; the second tick is given by hand.
class TickedWidget : public CUIViewerWidget {
public:
    explicit TickedWidget(QWidget* parent = s_window.get()) : CUIViewerWidget(parent, 0, Never) { resize(120, 120); }

    void secondTick() { QVERIFY(QMetaObject::invokeMethod(this, "onTimer2")); }
    const kiv::CPrimitiveRenderable* body() const { return GetPreviewNode()->GetRenderable().get(); }
};

/// The greatest distance of a vertex from the origin, which tells the bodies apart.
double reachOf(const kiv::CPrimitiveRenderable& body)
{
    double reach = 0;
    for (const auto& vertex : body.GetVertexArray())
        reach = std::max(reach, std::hypot(double(vertex.x), double(vertex.y), double(vertex.z)));
    return reach;
}

/// Keeps the keys that come through to it.
class KeyCatcher : public QWidget {
public:
    int keys = 0;

protected:
    void keyPressEvent(QKeyEvent*) override { ++keys; }
};

bool isBlue(const kiv::CColor& color)
{
    return color.r == 0 && color.g == 0 && color.b == 255;
}

}  // namespace

/// The late-made viewer: what waits for which tick, the bodies, the sky and the input.
class TestViewerWidget : public MaterialTest {
    Q_OBJECT

protected:
    void prepare() override
    {
        s_window = std::make_unique<QWidget>();
        s_window->resize(300, 200);
        s_window->show();
    }
    void finish() override { s_window.reset(); }

private slots:
    void eachBeginsWithItsOwnBody()
    {
        CSceneWidget large(s_window.get());
        CTextureSceneWidget small(s_window.get());
        QVERIFY(small.GetBackgroundColor() != large.GetBackgroundColor());
        QTRY_VERIFY(large.GetViewer() && large.GetPreviewNode()->GetRenderable());
        QTRY_VERIFY(small.GetViewer() && small.GetPreviewNode()->GetRenderable());
        QVERIFY(std::abs(reachOf(*small.GetPreviewNode()->GetRenderable()) - std::sqrt(0.75)) < 1e-6);
        QVERIFY(reachOf(*large.GetPreviewNode()->GetRenderable()) > 1);
    }

    void firstTickMakesTheViewer()
    {
        TickedWidget widget;
        QVERIFY(!widget.GetViewer() && !widget.GetPreviewNode());
        QTRY_VERIFY(widget.GetViewer());
        kiv::CViewer& viewer = *widget.GetViewer();
        kiv::CCamera isometric;
        isometric.SetViewPoint(0);
        QCOMPARE(viewer.GetCamera().GetYaw(), isometric.GetYaw());
        QCOMPARE(viewer.GetCamera().GetPitch(), isometric.GetPitch());
        QVERIFY(widget.isVisible());
        widget.secondTick();
        QVERIFY(!widget.body() && !widget.GetPreviewNode()->GetStateSet());
    }

    void requestsWaitForTheirTick()
    {
        TickedWidget widget;
        const GRefPtr<kiv::CStateSet> first(new kiv::CStateSet);
        const GRefPtr<kiv::CStateSet> second(new kiv::CStateSet);
        widget.SetBackgroundColor(Qt::red);
        widget.SetBackgroundColor(Qt::blue);
        widget.SwitchScene("Sphere");
        widget.SwitchScene("Box");
        widget.SetStateSet(first.get());
        widget.SetStateSet(second.get());
        widget.SetStateSet(nullptr);
        QTRY_VERIFY(widget.GetViewer());
        QVERIFY(isBlue(widget.GetViewer()->GetBackgroundColor()));
        QVERIFY(!widget.body() && !widget.GetPreviewNode()->GetStateSet());

        // Done once: what happens to the background in between stays.
        widget.GetViewer()->SetBackgroundColor(kiv::CColor(1, 2, 3));
        widget.secondTick();
        QCOMPARE(widget.GetViewer()->GetBackgroundColor().r, 1);
        QVERIFY(std::abs(reachOf(*widget.body()) - std::sqrt(0.75)) < 1e-6);
        QCOMPARE(widget.GetPreviewNode()->GetStateSet(), second.get());
    }

    void laterRequestsRunAtOnce()
    {
        TickedWidget widget;
        widget.SwitchScene("Cylinder");
        QTRY_VERIFY(widget.GetViewer());
        // Between the ticks: what is asked for now is not undone by what was asked for earlier.
        widget.SwitchScene("Sphere");
        const kiv::CPrimitiveRenderable* sphere = widget.body();
        QVERIFY(sphere);
        widget.secondTick();
        QCOMPARE(widget.body(), sphere);
        widget.SwitchScene("Teapot");
        QCOMPARE(widget.body(), sphere);
        widget.SetBackgroundColor(Qt::blue);
        QVERIFY(isBlue(widget.GetViewer()->GetBackgroundColor()));
        QCOMPARE(widget.palette().color(QPalette::Window), QColor(Qt::blue));

        // Another material leaves the view as the user turned it, another body is fitted.
        kiv::CCamera& camera = widget.GetViewer()->GetCamera();
        camera.Orbit(0.5, 0.1);
        camera.Zoom(1.5);
        const double yaw = camera.GetYaw();
        const double distance = camera.GetDistance();
        const GRefPtr<kiv::CStateSet> stateSet(new kiv::CStateSet);
        widget.SetStateSet(stateSet.get());
        QCOMPARE(widget.GetPreviewNode()->GetStateSet(), stateSet.get());
        QCOMPARE(camera.GetYaw(), yaw);
        QCOMPARE(camera.GetDistance(), distance);
        widget.SwitchScene("Box");
        QVERIFY(camera.GetFittedRadius() > 0.5 && camera.GetDistance() > 2 * distance);
        QCOMPARE(widget.GetPreviewNode()->GetStateSet(), stateSet.get());
    }

    void placeholderStandsIn()
    {
        QWidget window;
        auto* layout = new QVBoxLayout(&window);
        auto* placeholder = new QLabel("...", &window);
        auto* widget = new TickedWidget(&window);
        layout->addWidget(placeholder);
        layout->addWidget(widget);
        widget->SetPlaceholder(placeholder);
        QVERIFY(widget->isHidden() && !placeholder->isHidden());
        window.show();
        QTRY_VERIFY(widget->isVisible() && placeholder->isHidden());

        // It may also go first.
        auto* orphan = new TickedWidget(&window);
        auto* gone = new QLabel(&window);
        orphan->SetPlaceholder(gone);
        delete gone;
        QTRY_VERIFY(orphan->GetViewer());
    }

    void goesBeforeItsTicks()
    {
        for (int ticks = 0; ticks < 2; ++ticks) {
            auto widget = std::make_unique<TickedWidget>();
            widget->SwitchScene("Box");
            widget->SetBackgroundColor(Qt::red);
            widget->SetStateSet(new kiv::CStateSet);
            if (ticks)
                QTRY_VERIFY(widget->GetViewer());
            widget.reset();
        }
    }

    void standsAlone()
    {
        TickedWidget widget(nullptr);
        widget.SetBackgroundColor(Qt::blue);
        widget.show();
        QTRY_VERIFY(widget.GetViewer() && widget.GetViewer()->GetFrameCount() > 0);
        QCOMPARE(widget.grab().toImage().pixelColor(60, 60), QColor(Qt::blue));
    }

    void bodies_data()
    {
        QTest::addColumn<double>("reach");
        QTest::newRow("Cylinder") << std::hypot(1.0, 0.8);
        QTest::newRow("Sphere") << 0.1;
        QTest::newRow("Box") << std::sqrt(0.75);
        QTest::newRow("Surface") << std::sqrt(33.0);
        QTest::newRow("sphere") << 0.0;
        QTest::newRow("") << 0.0;
    }

    void bodies()
    {
        QFETCH(double, reach);
        TickedWidget widget;
        QTRY_VERIFY(widget.GetViewer());
        widget.SwitchScene("Box");
        const kiv::CPrimitiveRenderable* before = widget.body();
        widget.SwitchScene(QTest::currentDataTag());
        if (reach == 0.0) {
            QCOMPARE(widget.body(), before);
            return;
        }
        const kiv::CPrimitiveRenderable& body = *widget.body();
        QCOMPARE(body.GetPrimitiveType(), 11);
        QCOMPARE(body.GetTextureChannels(), 2);
        QVERIFY(body.IsDrawable() && !body.GetIndexArray().empty());
        QCOMPARE(body.GetTangentArray().size(), body.GetVertexArray().size());
        QCOMPARE(body.GetTextureArray(1).size(), body.GetVertexArray().size());
        QVERIFY2(std::abs(reachOf(body) - reach) < 0.01, qPrintable(QString::number(reachOf(body))));
    }

    void eventsForTheViewer_data()
    {
        const auto row = testColumns<int, int, unsigned>("event", "type", "buttons");
        // A press and a release tell of their own button, a move of all that are down.
        row("press", QEvent::MouseButtonPress, 1, Qt::RightButton);
        row("release", QEvent::MouseButtonRelease, 2, Qt::RightButton);
        row("double click", QEvent::MouseButtonDblClick, 3, Qt::RightButton);
        row("move", QEvent::MouseMove, 4, Qt::LeftButton | Qt::MiddleButton);
        row("wheel", QEvent::Wheel, 5, Qt::LeftButton | Qt::MiddleButton);
        row("key press", QEvent::KeyPress, 6, 0);
        row("key release", QEvent::KeyRelease, 7, 0);
    }

    void eventsForTheViewer()
    {
        QFETCH(int, event);
        QFETCH(int, type);
        QFETCH(unsigned, buttons);
        const Qt::MouseButtons down = Qt::LeftButton | Qt::MiddleButton;
        const Qt::KeyboardModifiers modifiers = Qt::ShiftModifier | Qt::AltModifier;
        const bool isWheel = event == QEvent::Wheel;
        if (event == QEvent::KeyPress || event == QEvent::KeyRelease) {
            constexpr unsigned native = 0xff1b;
            const QKeyEvent key(QEvent::Type(event), Qt::Key_Escape, modifiers, 9, native, 0);
            QCOMPARE(ViewerEventOf(key).type, type);
            QCOMPARE(ViewerEventOf(key).key, native);
            return;
        }
        const QWheelEvent wheel({12, 34}, {500, 600}, {}, {15, -240}, down, modifiers, Qt::NoScrollPhase, false);
        const QMouseEvent mouse(QEvent::Type(event), {12, 34}, {12, 34}, {500, 600}, Qt::RightButton, down, modifiers);
        const kiv::CMouseEventArgs args = isWheel ? ViewerEventOf(wheel) : ViewerEventOf(mouse);
        QCOMPARE(args.type, type);
        QCOMPARE(QPoint(args.x, args.y), QPoint(12, 34));
        QCOMPARE(args.delta, isWheel ? -240 : 0);
        QCOMPARE(args.buttons, buttons);
        QCOMPARE(args.modifiers, unsigned(modifiers));
    }

    void mouseWorksTheCamera()
    {
        TickedWidget widget;
        widget.SwitchScene("Box");
        QTRY_VERIFY(widget.GetViewer());
        widget.secondTick();
        const kiv::CCamera& camera = widget.GetViewer()->GetCamera();
        const double yaw = camera.GetYaw();
        const double distance = camera.GetDistance();
        const auto sendWheel = [&](int delta) {
            QWheelEvent event({60, 60}, widget.mapToGlobal({60, 60}), {}, {0, delta}, Qt::NoButton, Qt::NoModifier,
                              Qt::NoScrollPhase, false);
            QApplication::sendEvent(&widget, &event);
            return event.isAccepted();
        };
        QTest::mousePress(&widget, Qt::LeftButton, {}, {40, 60});
        QMouseEvent drag(QEvent::MouseMove, QPointF(70, 60), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&widget, &drag);
        QTest::mouseRelease(&widget, Qt::LeftButton, {}, {70, 60});
        QVERIFY(std::abs(camera.GetYaw() - yaw) > 0.1);
        QMouseEvent shifted(QEvent::MouseMove, QPointF(100, 60), Qt::NoButton, Qt::LeftButton, Qt::ShiftModifier);
        QApplication::sendEvent(&widget, &shifted);
        QVERIFY(!(camera.GetCentre() == kiv::CVec3<double>()));
        QVERIFY(sendWheel(120));
        QVERIFY(camera.GetDistance() < distance);
        QTest::mouseDClick(&widget, Qt::LeftButton, {}, {60, 60});
        QCOMPARE(camera.GetYaw(), yaw);
        QCOMPARE(camera.GetDistance(), distance);

        // Another body, seen from where the user turned to, is no new view point.
        widget.GetViewer()->GetCamera().Orbit(0.5, 0.3);
        widget.SwitchScene("Cylinder");
        QVERIFY(std::abs(camera.GetYaw() - yaw) > 0.1);
        const double fitted = camera.GetDistance();
        widget.GetViewer()->GetCamera().Zoom(2);
        QTest::mouseDClick(&widget, Qt::LeftButton, {}, {60, 60});
        kiv::CCamera first;
        first.SetViewPoint(kiv::CCamera::ViewIsometric);
        QCOMPARE(camera.GetYaw(), first.GetYaw());
        QCOMPARE(camera.GetPitch(), first.GetPitch());
        QCOMPARE(camera.GetDistance(), fitted);
    }

    void unusedKeysGoOn()
    {
        KeyCatcher window;
        TickedWidget widget(&window);
        QTest::keyClick(&widget, Qt::Key_Escape);
        QCOMPARE(window.keys, 1);
        QTRY_VERIFY(widget.GetViewer());
        QTest::keyClick(&widget, Qt::Key_Escape);
        QCOMPARE(window.keys, 2);
    }

    void drawsWhatChanges()
    {
        TickedWidget widget;
        widget.SwitchScene("Sphere");
        QTRY_VERIFY(widget.GetViewer());
        widget.secondTick();
        const kiv::CViewer& viewer = *widget.GetViewer();
        QTRY_VERIFY(viewer.GetFrameCount() > 0);
        const GRefPtr<kiv::CStateSet> stateSet(new kiv::CStateSet);
        const std::function<void()> changes[] = {[&] { widget.SetStateSet(stateSet.get()); },
                                                 [&] { widget.SetBackgroundColor(Qt::blue); },
                                                 [&] { widget.SwitchScene("Box"); }};
        for (const auto& change : changes) {
            // What was asked for before is drawn.
            for (int round = 0; round < 20; ++round)
                QCoreApplication::processEvents();
            const unsigned before = viewer.GetFrameCount();
            change();
            QTRY_VERIFY(viewer.GetFrameCount() > before);
        }
    }
};

MATERIAL_TEST_MAIN(TestViewerWidget)
#include "TestViewerWidget.moc"
