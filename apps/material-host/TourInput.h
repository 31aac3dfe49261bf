#pragma once

#include <QAbstractItemView>
#include <QComboBox>
#include <QMenu>
#include <QPoint>
#include <QToolButton>
#include <QWidget>

#include <functional>
#include <vector>

/// The mouse and the keyboard of a tour. Events go to the windows of the platform, so that modal dialogs, pop-ups and
/// shortcuts take them as they take a person's; a click on something that is covered or disabled is a failure.
namespace TourInput {

void hover(QWidget& widget, const QPoint& point);
void click(QWidget& widget, const QPoint& point, Qt::KeyboardModifiers modifiers = {});
void click(QWidget& widget);
void doubleClick(QWidget& widget, const QPoint& point);
/// With the left button.
void drag(QWidget& widget, const QPoint& from, const QPoint& to);
void clickItem(QAbstractItemView& view, const QModelIndex& index, Qt::KeyboardModifiers modifiers = {});
/// Opens the combo box and clicks the entry.
void choose(QComboBox& box, int row);

/// Opens the button's menu and clicks the entry.
void chooseFromMenu(QToolButton& button, int entry);

/// Does something that opens a context menu. `choose` is called once that is in front, and has to close it.
void inMenu(const std::function<void()>& open, const std::function<void(QMenu& menu)>& choose);
void rightClick(QWidget& widget, const QPoint& point);
void rightClickItem(QAbstractItemView& view, const QModelIndex& index);
/// Clicks the entry that bears the text.
void clickEntry(QMenu& menu, const QString& text);

/// Presses the key in the window that has the keyboard.
void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// Enters the text into the widget that has the keyboard, as an input method does.
void type(const QString& text);

/// Replaces what the widget holds, by mouse and keyboard.
void retype(QWidget& widget, const QString& text);
/// Names the file in an open file dialog and confirms.
void enterFile(QWidget& fileDialog, const QString& path);

using Answer = std::function<void(QWidget& modalWindow)>;
/// Does something that opens a modal window and returns only when that is closed, and perhaps another one after it.
/// Each answer is called with its window once that is in front, and has to close it; it must not wait for what comes
/// afterwards.
void answerModals(const std::function<void()>& open, const std::vector<Answer>& answers);

/// Where the mouse is, on the screen.
QPoint pointer();
void pointTo(const QPoint& globalPoint);

}  // namespace TourInput
