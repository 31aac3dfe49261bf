#pragma once

#include <kiv/EventArgs.h>

class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

/// What a viewer of the viewing library is told of a widget's events. Places are those of the widget that got the
/// event, which the viewer fills.
kiv::CKeyEventArgs ViewerEventOf(const QKeyEvent& event);
kiv::CMouseEventArgs ViewerEventOf(const QMouseEvent& event);
/// The vertical turn of the wheel.
kiv::CMouseEventArgs ViewerEventOf(const QWheelEvent& event);
