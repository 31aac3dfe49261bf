#pragma once

#include <QApplication>
#include <QTimer>

#include <functional>

/// Works the next modal window of a type, or the active modal window of it, as soon as it is on the screen; or, while
/// it is there, again and again.
template <typename Window>
class ModalMeeting {
public:
    explicit ModalMeeting(std::function<void(Window&)> meet, bool again = false)
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this, again, meet = std::move(meet)] {
            auto* window = qobject_cast<Window*>(QApplication::activeModalWidget());
            if (!window || !window->isVisible())
                return;
            if (!again)
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
