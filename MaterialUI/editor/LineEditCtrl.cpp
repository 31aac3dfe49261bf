#include "LineEditCtrl.h"

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
