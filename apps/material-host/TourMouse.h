#pragma once

#include <QPoint>
#include <QWidget>

#include <functional>

/// The mouse and the keyboard of the display itself (through xdotool), for what follows nothing else: dragging from one
/// window to another, and the menu key.
namespace TourMouse {

/// Drags from one widget to the other and lets go there. `over` is called before the button comes up.
void drag(QWidget& from, const QPoint& start, QWidget& to, const QPoint& end, const std::function<void()>& over);
/// Clicks, and with that brings the window to the front.
void click(QWidget& widget, const QPoint& point);
/// The key by its name in X ("Menu").
void press(const QString& key);

}  // namespace TourMouse
