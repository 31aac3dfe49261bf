#pragma once

#include "DynamicPropertyControl.h"

#include <QGroupBox>

/// A switch that holds the controls which only count while it is on; they lie in its own vertical layout.
class CGroupBoxCtrl : public kiv::TDynamicPropertyControl<bool, QGroupBox> {
    Q_OBJECT

public:
    CGroupBoxCtrl(const QString& id, QWidget* parent);

    void SetTypedValue(const bool& value) override;
    bool GetTypedValue() const override;

signals:
    void ChangeProperty(const kiv::String& id, const kiv::CPropertyValuePtr& val);

public slots:
    void OnValueChanged(bool checked);
};
