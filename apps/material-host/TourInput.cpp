#include "TourInput.h"

#include "TourChecks.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <exception>

namespace {

QPoint s_pointer;

bool isUncovered(const QWidget& widget, const QPoint& globalPoint)
{
    const QWidget* met = QApplication::widgetAt(globalPoint);
    const QWidget* modal = QApplication::activeModalWidget();
    const bool isBlocked = modal && modal != widget.window() && !QApplication::activePopupWidget();
    return !isBlocked && met && (met == &widget || widget.isAncestorOf(met));
}

/// The window's point below which the widget lies uncovered. A dialog that tells of progress may come up at any time
/// and goes by itself: a person would wait for that.
QPoint reach(QWidget& widget, const QPoint& point)
{
    TourChecks::expect(widget.isVisible() && widget.isEnabled(), widget.objectName() + " can be clicked");
    s_pointer = widget.mapToGlobal(point);
    TourChecks::await([&] { return isUncovered(widget, s_pointer); }, widget.objectName() + " is not covered");
    return widget.mapTo(widget.window(), point);
}

QPoint reachable(QAbstractItemView& view, const QModelIndex& index)
{
    view.scrollTo(index);
    QApplication::processEvents();
    return view.visualRect(index).intersected(view.viewport()->rect()).center();
}

/// Answers modal windows from within whatever event loop runs: what opens one does not return before it is closed, and
/// a wait in here would keep that very loop from going on. An answer may itself open the next one.
class ModalAnswers {
public:
    explicit ModalAnswers(const std::vector<TourInput::Answer>& answers)
        : m_answers(answers), m_before(QApplication::activeModalWidget())
    {
        lookSoon();
        m_since.start();
    }
    bool isDone() const { return m_running == 0 && (m_failure || m_next == m_answers.size()); }
    void rethrow() const
    {
        if (m_failure)
            std::rethrow_exception(m_failure);
    }

private:
    // Not a repeating timer: one does not go off while what it called runs.
    void lookSoon()
    {
        QTimer::singleShot(20, &m_context, [this] { look(); });
    }
    void look()
    {
        if (m_failure)
            return;
        lookSoon();
        QWidget* modal = QApplication::activeModalWidget();
        const bool ready = modal && modal != m_before && modal->isActiveWindow() && modal->windowHandle()->isExposed();
        if (m_since.elapsed() > TourChecks::LimitMs)
            attempt([] { throw TourFailure("no further dialog opens, or the last one stays"); });
        else if (ready && m_next < m_answers.size())
            attempt([&] { answer(*modal); });
    }
    void answer(QWidget& modal)
    {
        m_before = &modal;
        m_since.start();
        m_answers[m_next++](modal);
    }
    void attempt(const std::function<void()>& act)
    {
        ++m_running;
        try {
            act();
        } catch (const TourFailure&) {
            m_failure = std::current_exception();
            if (QWidget* left = QApplication::activeModalWidget())
                left->close();
        }
        --m_running;
    }

    const std::vector<TourInput::Answer>& m_answers;
    std::size_t m_next = 0;
    int m_running = 0;
    QPointer<QWidget> m_before;
    QObject m_context;
    QElapsedTimer m_since;
    std::exception_ptr m_failure;
};

}  // namespace

void TourInput::hover(QWidget& widget, const QPoint& point)
{
    const QPoint place = reach(widget, point);
    QTest::mouseMove(widget.window()->windowHandle(), place);
}

void TourInput::click(QWidget& widget, const QPoint& point, Qt::KeyboardModifiers modifiers)
{
    hover(widget, point);
    const QPoint place = reach(widget, point);
    const QPointer<QWindow> window = widget.window()->windowHandle();
    QTest::mousePress(window, Qt::LeftButton, modifiers, place);
    // The press may have closed the window; the button then comes up over whatever lies below.
    if (window)
        QTest::mouseRelease(window, Qt::LeftButton, modifiers, place);
    else if (QWindow* below = QGuiApplication::topLevelAt(s_pointer))
        QTest::mouseRelease(below, Qt::LeftButton, {}, below->mapFromGlobal(s_pointer));
}

void TourInput::click(QWidget& widget)
{
    click(widget, widget.rect().center());
}

void TourInput::doubleClick(QWidget& widget, const QPoint& point)
{
    hover(widget, point);
    QTest::mouseDClick(widget.window()->windowHandle(), Qt::LeftButton, {}, reach(widget, point));
}

void TourInput::drag(QWidget& widget, const QPoint& from, const QPoint& to)
{
    constexpr int steps = 12;
    QWindow* window = widget.window()->windowHandle();
    hover(widget, from);
    QTest::mousePress(window, Qt::LeftButton, {}, reach(widget, from));
    for (int i = 1; i <= steps; ++i)
        QTest::mouseMove(window, reach(widget, from + (to - from) * i / steps));
    QTest::mouseRelease(window, Qt::LeftButton, {}, reach(widget, to));
}

void TourInput::clickItem(QAbstractItemView& view, const QModelIndex& index, Qt::KeyboardModifiers modifiers)
{
    click(*view.viewport(), reachable(view, index), modifiers);
}

void TourInput::rightClick(QWidget& widget, const QPoint& point)
{
    hover(widget, point);
    QTest::mouseClick(widget.window()->windowHandle(), Qt::RightButton, {}, reach(widget, point));
}

void TourInput::rightClickItem(QAbstractItemView& view, const QModelIndex& index)
{
    rightClick(*view.viewport(), reachable(view, index));
}

void TourInput::choose(QComboBox& box, int row)
{
    QAbstractItemView& list = *box.view();
    // A button that comes up later than a double click would takes what lies below it in the list and closes it, which
    // happens on a machine that is held up. Whoever sees that clicks again.
    const auto open = [&] {
        if (!list.isVisible())
            click(box);
        return list.isVisible() && list.window()->windowHandle()->isExposed();
    };
    TourChecks::await(open, "the list of the combo box opens");
    // A combo box lets go of the list only when the button was up for a moment, lest the opening click chooses.
    const auto chosen = [&] {
        if (list.isVisible())
            clickItem(list, list.model()->index(row, box.modelColumn()));
        return !list.isVisible();
    };
    TourChecks::await(chosen, "the list of the combo box closes");
}

// What is chosen may run an event loop of its own, below the one in which the menu is looked for.
void TourInput::inMenu(const std::function<void()>& open, const std::function<void(QMenu& menu)>& choose)
{
    std::exception_ptr failure;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu || !menu->windowHandle()->isExposed())
            return;
        look.stop();
        try {
            choose(*menu);
        } catch (const TourFailure&) {
            failure = std::current_exception();
            menu->close();
        }
    });
    look.start(20);
    open();
    TourChecks::await([&] { return !look.isActive() && !QApplication::activePopupWidget(); }, "the menu closes");
    if (failure)
        std::rethrow_exception(failure);
}

void TourInput::clickEntry(QMenu& menu, const QString& text)
{
    for (QAction* action : menu.actions()) {
        // Beside the text there may be a shortcut and the mark of a mnemonic.
        const QString shown = action->text().remove('&').section('\t', 0, 0);
        if (action->isVisible() && shown == text) {
            TourChecks::expect(action->isEnabled(), "the menu's entry " + text + " can be chosen");
            return click(menu, menu.actionGeometry(action).center());
        }
    }
    throw TourFailure("the menu has no entry " + text);
}

// The menu has the event loop until it closes.
void TourInput::chooseFromMenu(QToolButton& button, int entry)
{
    QMenu& menu = *button.menu();
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        if (!menu.isVisible() || !menu.windowHandle()->isExposed())
            return;
        look.stop();
        click(menu, menu.actionGeometry(menu.actions().at(entry)).center());
    });
    look.start(20);
    click(button);
    TourChecks::await([&] { return !menu.isVisible() && !look.isActive(); }, "the menu closes");
}

void TourInput::press(int key, Qt::KeyboardModifiers modifiers)
{
    const QPointer<QWindow> window = QGuiApplication::focusWindow();
    TourChecks::expect(window, "a window has the keyboard");
    QTest::keyPress(window, Qt::Key(key), modifiers);
    if (window)
        QTest::keyRelease(window, Qt::Key(key), modifiers);
}

void TourInput::type(const QString& text)
{
    QObject* focus = QGuiApplication::focusObject();
    TourChecks::expect(focus, "something takes the text \"" + text + "\"");
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(focus, &event);
}

void TourInput::retype(QWidget& widget, const QString& text)
{
    click(widget);
    press(Qt::Key_A, Qt::ControlModifier);
    type(text);
}

void TourInput::enterFile(QWidget& fileDialog, const QString& path)
{
    retype(TourChecks::part<QLineEdit>(fileDialog, "fileNameEdit"), path);
    press(Qt::Key_Return);
}

void TourInput::answerModals(const std::function<void()>& open, const std::vector<Answer>& answers)
{
    ModalAnswers modals(answers);
    open();
    TourChecks::await([&] { return modals.isDone(); }, "the dialogs open and are answered");
    modals.rethrow();
}

QPoint TourInput::pointer()
{
    return s_pointer;
}

void TourInput::pointTo(const QPoint& globalPoint)
{
    s_pointer = globalPoint;
}
