#include "ViewerEvents.h"

#include <QMouseEvent>
#include <QWheelEvent>

namespace {

int typeOf(const QMouseEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
        return kiv::MousePressEvent;
    case QEvent::MouseButtonRelease:
        return kiv::MouseReleaseEvent;
    case QEvent::MouseButtonDblClick:
        return kiv::MouseDoubleClickEvent;
    default:
        return kiv::MouseMoveEvent;
    }
}

}  // namespace

kiv::CKeyEventArgs ViewerEventOf(const QKeyEvent& event)
{
    const int type = event.type() == QEvent::KeyRelease ? kiv::KeyReleaseEvent : kiv::KeyPressEvent;
    return {type, event.nativeVirtualKey()};
}

kiv::CMouseEventArgs ViewerEventOf(const QMouseEvent& event)
{
    const int type = typeOf(event);
    const unsigned buttons = type == kiv::MouseMoveEvent ? unsigned(event.buttons()) : unsigned(event.button());
    return {type, event.x(), event.y(), 0, buttons, unsigned(event.modifiers())};
}

kiv::CMouseEventArgs ViewerEventOf(const QWheelEvent& event)
{
    const QPoint place = event.position().toPoint();
    return {kiv::MouseWheelEvent,       place.x(), place.y(), event.angleDelta().y(), unsigned(event.buttons()),
            unsigned(event.modifiers())};
}
