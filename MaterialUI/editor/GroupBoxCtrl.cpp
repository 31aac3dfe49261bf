#include "GroupBoxCtrl.h"

#include <QVBoxLayout>

CGroupBoxCtrl::CGroupBoxCtrl(const QString& id, QWidget* parent) : TDynamicPropertyControl(id, parent)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 4, 8, 6);
    layout->setSpacing(4);
    connect(this, SIGNAL(clicked(bool)), this, SLOT(OnValueChanged(bool)));
}

void CGroupBoxCtrl::SetTypedValue(const bool& value)
{
    setChecked(value);
}

bool CGroupBoxCtrl::GetTypedValue() const
{
    return isChecked();
}

void CGroupBoxCtrl::OnValueChanged(bool /*checked*/)
{
    emit ChangeProperty(GetId(), GetValue());
}
