#pragma once

#include "ColorButton.h"
#include "DynamicPropertyControl.h"

#include <kiv/Vector.h>

/// Shows a colour (red, green, blue, alpha, each 0..1) in steps of 1/255; the alpha is not shown, but kept.
class CColorCtrl : public kiv::TDynamicPropertyControl<kiv::CVec4<float>, QColorButton> {
    Q_OBJECT

public:
    CColorCtrl(const QString& id, QWidget* parent);

    void SetTypedValue(const kiv::CVec4<float>& value) override;
    kiv::CVec4<float> GetTypedValue() const override;

signals:
    void ChangeProperty(const kiv::String& id, const kiv::CPropertyValuePtr& val);

public slots:
    void OnValueChanged();

private:
    float m_alpha = 1;
};
