#pragma once

namespace kiv {

/// What a viewer's owner passes on from its window.
enum EnEventType {
    MousePressEvent = 1,
    MouseReleaseEvent = 2,
    MouseDoubleClickEvent = 3,
    MouseMoveEvent = 4,
    MouseWheelEvent = 5,
    KeyPressEvent = 6,
    KeyReleaseEvent = 7
};

struct CEventArgs {
    explicit CEventArgs(int eventType) : type(eventType) {}
    virtual ~CEventArgs() = default;

    int type;  ///< EnEventType
};

struct CKeyEventArgs : CEventArgs {
    CKeyEventArgs(int eventType, unsigned nativeKey) : CEventArgs(eventType), key(nativeKey) {}

    unsigned key;  ///< the native virtual key; 0 when the system gave none
};

struct CMouseEventArgs : CEventArgs {
    CMouseEventArgs(int eventType, int px, int py, int wheelDelta, unsigned pressedButtons, unsigned keyModifiers)
        : CEventArgs(eventType), x(px), y(py), delta(wheelDelta), buttons(pressedButtons), modifiers(keyModifiers)
    {
    }

    int x, y;            ///< logical pixels from the window's top left
    int delta;           ///< of the wheel, in eighths of a degree, away from the user positive
    unsigned buttons;    ///< as Qt::MouseButtons; for press and release the button itself
    unsigned modifiers;  ///< as Qt::KeyboardModifiers
};

}  // namespace kiv
