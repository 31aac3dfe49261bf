#include "TourChecks.h"

#include <QElapsedTimer>
#include <QTest>
#include <QWindow>

namespace {

constexpr int SettledMs = 250;  // without any change
constexpr int NudgeMs = 3000;

/// When one modal window follows another at once, Qt hands the keyboard that comes back to the main window on to a
/// window that is gone by then, and does not notice that the window manager let the main window keep it. Giving it away
/// and taking it back tells Qt.
void passFocusAround()
{
    QWidget other;
    other.show();
    (void)QTest::qWaitForWindowActive(&other);
}

}  // namespace

void TourChecks::expect(bool condition, const QString& what)
{
    if (!condition)
        throw TourFailure("expected that " + what);
}

void TourChecks::await(const std::function<bool()>& condition, const QString& what)
{
    if (!QTest::qWaitFor(condition, LimitMs))
        throw TourFailure("waited in vain that " + what);
}

void TourChecks::awaitActive(const QWidget& widget)
{
    const QWidget* window = widget.window();
    QElapsedTimer waited;
    waited.start();
    const auto active = [&] {
        const QWindow* handle = window->windowHandle();
        if (window->isActiveWindow() && handle && handle->isExposed())
            return true;
        if (waited.elapsed() > NudgeMs) {
            passFocusAround();
            waited.start();
        }
        return false;
    };
    await(active, "the window \"" + window->windowTitle() + "\" is in front");
}

void TourChecks::awaitSettled(QWidget& widget)
{
    QImage last;
    QElapsedTimer unchanged;
    const auto settled = [&] {
        const QImage now = widget.grab().toImage();
        if (now != last)
            unchanged.start();
        last = now;
        return unchanged.elapsed() > SettledMs;
    };
    await(settled, "the pictures have arrived");
}
