// A machine that refuses to draw: the background and the reason are all there is.
#include "MaterialTest.h"
#include "PreviewFixture.h"

#include <kiv/TextureManager.h>

#include <QOpenGLContext>

namespace {

const char* const NoContext = "does not support createPlatformOpenGLContext";

/// Counts what timers of the whole program fire while it lives.
class TimerCounter : public QObject {
public:
    TimerCounter() { qApp->installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        timeouts += event->type() == QEvent::Timer;
        return false;
    }

    int timeouts = 0;
};

}  // namespace

class TestPreviewWithoutOpenGL : public MaterialTest {
    Q_OBJECT

private slots:
    void showsItsBackground()
    {
        expectWarning(NoContext);
        QVERIFY(!QOpenGLContext().create());
        QWidget host;
        host.resize(60, 40);
        kiv::CViewer viewer(host.winId());
        viewer.GetOptions().SetViewAxesEnabled(false);
        viewer.SetBackgroundColor({10, 120, 30});
        QCOMPARE(host.grab().toImage().pixelColor(30, 20), QColor(10, 120, 30));
        QVERIFY(!viewer.GetReason().empty());
        QCOMPARE(viewer.GetFrameCount(), 0U);
    }

    // A timer that runs freely keeps a core busy.
    void restsAfterAMovement()
    {
        expectWarning(NoContext);
        PreviewFixture preview;
        TimerCounter counter;
        const double yaw = preview.viewer().GetCamera().GetYaw();
        for (const int x : {10, 40})
            preview.viewer().ProcessEvent(kiv::CMouseEventArgs(kiv::MouseMoveEvent, x, 20, 0, Qt::LeftButton, 0));
        QVERIFY(preview.viewer().GetCamera().GetYaw() != yaw);
        for (int round = 0; round < 50; ++round)
            QCoreApplication::processEvents();
        QCOMPARE(counter.timeouts, 0);
    }

    void answersWithoutPictures()
    {
        expectWarning(NoContext);
        PreviewFixture preview;
        preview.setMaterial(preview.material("Red facing brick, running bond"));
        preview.setSky(PreviewFixture::shippedSky());
        QVERIFY(preview.picture(60, 40).isNull());
        QVERIFY(!preview.viewer().GetReason().empty());
        QVERIFY(preview.viewer().PickNode(0, 0) != nullptr);
        kiv::CTextureManager::ReleaseTextures();
    }
};

MATERIAL_TEST_MAIN(TestPreviewWithoutOpenGL)
#include "TestPreviewWithoutOpenGL.moc"
