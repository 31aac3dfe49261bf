#include "TourChecks.h"

#include <QElapsedTimer>
#include <QTest>
#include <QWindow>

namespace {

constexpr int SettledMs = 250;  // without any change

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
    const auto active = [window] {
        const QWindow* handle = window->windowHandle();
        return window->isActiveWindow() && handle && handle->isExposed();
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
