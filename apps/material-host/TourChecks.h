#pragma once

#include <QImage>
#include <QString>
#include <QWidget>

#include <functional>
#include <stdexcept>

/// A step of the tour did not do what it says. Never crosses Qt's event loop: steps run outside of it.
class TourFailure : public std::runtime_error {
public:
    explicit TourFailure(const QString& what) : std::runtime_error(what.toStdString()) {}
};

/// What the steps of a tour check and wait for. Waiting is for a condition and ends with a failure at a time limit.
namespace TourChecks {

constexpr int LimitMs = 60000;

void expect(bool condition, const QString& what);
/// The widget of the object name somewhere below; a failure when there is none.
template <typename Widget>
Widget& part(const QWidget& parent, const char* name)
{
    if (auto* found = parent.findChild<Widget*>(name))
        return *found;
    throw TourFailure(QString("there is no %1").arg(name));
}
void await(const std::function<bool()>& condition, const QString& what);
/// The widget's window is on the screen and has the keyboard.
void awaitActive(const QWidget& widget);
/// The widget's picture no longer changes, as it does while thumbnails arrive.
void awaitSettled(QWidget& widget);
/// The widget as the screen shows it, with what lies over it, when it no longer changes.
QImage settledOnScreen(const QWidget& widget);

}  // namespace TourChecks
