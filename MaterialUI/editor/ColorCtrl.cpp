#include "ColorCtrl.h"

namespace {

// Towards zero. What is no number, or none of a colour, would be no colour at all.
int byteOf(float part)
{
    return part > 0 ? int(qMin(part, 1.0F) * 255) : 0;
}

float partOf(int byte)
{
    return float(byte / 255.0);
}

}  // namespace

CColorCtrl::CColorCtrl(const QString& id, QWidget* parent) : TDynamicPropertyControl(id, parent)
{
    connect(this, SIGNAL(colorChanged()), this, SLOT(OnValueChanged()));
}

void CColorCtrl::SetTypedValue(const kiv::CVec4<float>& value)
{
    const QColor shown(byteOf(value.x), byteOf(value.y), byteOf(value.z), 255);
    m_alpha = value.w;
    setColor(shown);
    setText(rgbText(shown));
}

kiv::CVec4<float> CColorCtrl::GetTypedValue() const
{
    return {partOf(color().red()), partOf(color().green()), partOf(color().blue()), m_alpha};
}

void CColorCtrl::OnValueChanged()
{
    emit ChangeProperty(GetId(), GetValue());
}
