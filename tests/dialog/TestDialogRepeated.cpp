// The dialog and its preview, opened and closed again and again: everything that was taken is given back.
#include "DialogFixture.h"

#include <SceneWidget.h>

#include <MaterialTest.h>
#include <Measured.h>

#include <kiv/Viewer.h>

#include <QApplication>
#include <QWindow>

namespace {

/// Makes its viewer and its body as soon as events run.
class QuickPreview : public CUIViewerWidget {
public:
    explicit QuickPreview(QWidget* parent) : CUIViewerWidget(parent, 0, 0) { SwitchScene("Sphere"); }
};

/// What may not become more from round to round.
struct Level {
    double megabytes = residentMegabytes();
    int widgets = QApplication::allWidgets().size();
    int windows = QGuiApplication::allWindows().size();
};

void compare(const char* what, const Level& before)
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const Level after;
    qInfo("%s: %.1f MB before, %.1f MB after", what, before.megabytes, after.megabytes);
    QCOMPARE(after.widgets, before.widgets);
    QCOMPARE(after.windows, before.windows);
#ifndef __SANITIZE_ADDRESS__  // which keeps freed memory back
    QVERIFY(after.megabytes < before.megabytes + 24);
#endif
}

}  // namespace

class TestDialogRepeated : public MaterialTest {
    Q_OBJECT

private slots:
    // Each is drawn before it goes. Some are the last, which takes the OpenGL context with it; the others, for the time
    // that takes, are not.
    void previews()
    {
        const auto round = [](bool isLast) {
            const std::unique_ptr<kiv::CViewer> other(isLast ? nullptr : new kiv::CViewer(0));
            for (int i = 0; i < (isLast ? 1 : 9); ++i) {
                QWidget window;
                window.resize(160, 120);
                QuickPreview preview(&window);
                preview.resize(window.size());
                window.show();
                QTRY_VERIFY(preview.GetViewer() && preview.GetViewer()->GetFrameCount() > 0);
                QCOMPARE(preview.GetViewer()->GetReason(), std::string());
            }
        };
        for (int i = 0; i < 4; ++i)
            round(i % 2);
        const Level before;
        for (int i = 0; i < 40 && !QTest::currentTestFailed(); ++i)
            round(i % 2);
        compare("200 previews", before);
    }

    // Most are closed before their preview starts, some after it was drawn.
    void dialogs()
    {
        DialogFixture fixture;
        const auto round = [&](bool waits) {
            TestedDialog dialog(fixture, false);
            dialog.show();
            QCoreApplication::processEvents();
            const auto isDrawn = [&] {
                const kiv::CViewer* viewer = dialog.findChild<CSceneWidget*>()->GetViewer();
                return viewer && viewer->GetFrameCount() > 0;
            };
            if (waits)
                QTRY_VERIFY(isDrawn());
        };
        for (int i = 0; i < 10; ++i)
            round(i % 5 == 0);
        const Level before;
        for (int i = 0; i < 200 && !QTest::currentTestFailed(); ++i)
            round(i % 20 == 0);
        compare("200 dialogs", before);
    }
};

MATERIAL_TEST_MAIN(TestDialogRepeated)
#include "TestDialogRepeated.moc"
