#include "TourMouse.h"

#include "TourChecks.h"
#include "TourInput.h"

#include <QDrag>
#include <QElapsedTimer>
#include <QProcess>
#include <QTimer>

#include <exception>
#include <vector>

namespace {

constexpr int DragLimitMs = 30000;
constexpr int DragSteps = 10;
const QStringList Pause{"sleep", "0.05"};

QStringList moveTo(const QPoint& place)
{
    return QStringList{"mousemove", QString::number(place.x()), QString::number(place.y())} + Pause;
}

/// Runs commands one after the other from within whatever event loop runs: a drag has one of its own until the button
/// comes up.
class Commands {
public:
    explicit Commands(std::vector<std::function<void()>> steps) : m_steps(std::move(steps))
    {
        QObject::connect(&m_look, &QTimer::timeout, [this] { look(); });
        m_look.start(20);
        m_since.start();
    }
    void run(const QStringList& arguments) { m_process.start("xdotool", arguments); }
    bool isDone() const { return m_next > m_steps.size(); }
    void rethrow() const
    {
        if (m_failure)
            std::rethrow_exception(m_failure);
    }

private:
    void look()
    {
        if (m_since.elapsed() > DragLimitMs)
            giveUp();
        if (isDone() || m_process.state() != QProcess::NotRunning)
            return;
        if (m_next < m_steps.size())
            attempt(m_steps[m_next]);
        ++m_next;
    }
    void attempt(const std::function<void()>& step)
    {
        try {
            step();
        } catch (const TourFailure&) {
            m_failure = std::current_exception();
        }
    }
    void giveUp()
    {
        QDrag::cancel();
        m_since.start();
        m_next = m_steps.size() + 1;
        attempt([] { throw TourFailure("the display's mouse does nothing (is xdotool there?)"); });
    }

    std::vector<std::function<void()>> m_steps;
    std::size_t m_next = 0;
    QProcess m_process;
    QTimer m_look;
    QElapsedTimer m_since;
    std::exception_ptr m_failure;
};

void perform(Commands& commands)
{
    TourChecks::await([&] { return commands.isDone(); }, "the display's mouse and keyboard have done their work");
    commands.rethrow();
}

void run(const QStringList& arguments)
{
    Commands* commands = nullptr;
    Commands one({[&] { commands->run(arguments); }});
    commands = &one;
    perform(one);
}

QStringList path(const QPoint& from, const QPoint& to)
{
    QStringList moves;
    for (int i = 1; i <= DragSteps; ++i)
        moves += moveTo(from + (to - from) * i / DragSteps);
    return moves + moveTo(to + QPoint(1, 0)) + moveTo(to);
}

}  // namespace

void TourMouse::drag(QWidget& from, const QPoint& start, QWidget& to, const QPoint& end,
                     const std::function<void()>& over)
{
    TourInput::hover(to, end);  // and not covered
    TourInput::hover(from, start);
    const QPoint begin = from.mapToGlobal(start);
    const QPoint target = to.mapToGlobal(end);
    Commands* commands = nullptr;
    Commands drag({[&] {
                       commands->run(moveTo(begin) + QStringList{"mousedown", "1"} + Pause + path(begin, target));
                   },
                   [&] { TourInput::pointTo(target); }, over,
                   [&] {
                       commands->run(QStringList{"mouseup", "1"} + Pause);
                   }});
    commands = &drag;
    perform(drag);
}

void TourMouse::click(QWidget& widget, const QPoint& point)
{
    TourInput::hover(widget, point);
    run(moveTo(widget.mapToGlobal(point)) + QStringList{"click", "1"});
}

void TourMouse::press(const QString& key)
{
    run({"key", key});
}
