#include "TourChecks.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QScreen>
#include <QTest>
#include <QWindow>

namespace {

constexpr int SettledMs = 250;  // without any change
constexpr int SettledOnScreenMs = 400;
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

QImage onScreen(const QWidget& widget)
{
    const QRect place(widget.mapToGlobal(QPoint()), widget.size());
    return QGuiApplication::primaryScreen()->grabWindow(0).toImage().copy(place);
}

/// Waits until the picture was the same for so long.
QImage awaitUnchanged(const std::function<QImage()>& picture, int forMs)
{
    QImage last;
    QElapsedTimer unchanged;
    const auto settled = [&] {
        const QImage now = picture();
        if (now != last)
            unchanged.start();
        last = now;
        return unchanged.elapsed() > forMs;
    };
    TourChecks::await(settled, "the pictures have arrived");
    return last;
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
    awaitUnchanged([&] { return widget.grab().toImage(); }, SettledMs);
}

QImage TourChecks::settledOnScreen(const QWidget& widget)
{
    return awaitUnchanged([&] { return onScreen(widget); }, SettledOnScreenMs);
}
