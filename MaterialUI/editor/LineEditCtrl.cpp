#include "LineEditCtrl.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>

CLineEditCtrl::CLineEditCtrl(const QString& id, QWidget* parent) : TDynamicPropertyControl(id, parent)
{
    connect(this, SIGNAL(textChanged(const QString&)), this, SLOT(OnValueChanged(const QString&)));
}

// Setting a text anew would move the cursor of somebody who types.
void CLineEditCtrl::SetTypedValue(const std::string& value)
{
    const QString shown = QString::fromLocal8Bit(value.c_str());
    if (shown != text())
        setText(shown);
}

std::string CLineEditCtrl::GetTypedValue() const
{
    return text().toLocal8Bit().toStdString();
}

void CLineEditCtrl::OnValueChanged(const QString& /*text*/)
{
    emit ChangeProperty(GetId(), GetValue());
}

// Where nobody keeps records, and for redoing, the keys come here.
void CLineEditCtrl::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Undo) || event->matches(QKeySequence::Redo))
        event->ignore();
    else
        QLineEdit::keyPressEvent(event);
}

// The standard menu of a line that can be written begins with undoing and redoing, and a separator after them.
void CLineEditCtrl::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu* menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    bool isUndoing = !isReadOnly();
    for (QAction* action : menu->actions()) {
        if (!isUndoing)
            break;
        isUndoing = !action->isSeparator();
        menu->removeAction(action);
    }
    menu->popup(event->globalPos());
}
