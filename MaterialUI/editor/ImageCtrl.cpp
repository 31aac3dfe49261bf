#include "ImageCtrl.h"

#include "ImagePreviewerCtrl.h"

#include <QHBoxLayout>
#include <QToolButton>

namespace {

constexpr int SmallestSide = 20;

}  // namespace

CImageCtrl::CImageCtrl(const QString& id, QWidget* parent) : TDynamicPropertyControl(id, parent)
{
    connect(&GetThumbnail(), SIGNAL(ChangeImageFile()), this, SLOT(OnValueChanged()));
}

void CImageCtrl::AddNormalMapButton()
{
    if (m_normalMapButton)
        return;
    m_normalMapButton = new QToolButton(this);
    m_normalMapButton->setText(QStringLiteral("<>"));
    m_normalMapButton->setToolTip(tr("Auto generate bump image"));
    m_normalMapButton->setAccessibleName(m_normalMapButton->toolTip());
    m_normalMapButton->setMinimumSize(SmallestSide, SmallestSide);
    m_row->addWidget(m_normalMapButton);
    connect(m_normalMapButton, SIGNAL(pressed()), this, SLOT(OnClickGenNormalMapButton()));
}

void CImageCtrl::SetTypedValue(const std::string& value)
{
    SetImage(QString::fromLocal8Bit(value.c_str()));
}

std::string CImageCtrl::GetTypedValue() const
{
    return GetImage().toLocal8Bit().toStdString();
}

void CImageCtrl::OnValueChanged()
{
    emit ChangeProperty(GetId(), GetValue());
}

void CImageCtrl::OnClickGenNormalMapButton()
{
    emit GenerateNormalMap(this);
}
