#pragma once

#include "DynamicPropertyControl.h"

#include <QDoubleSpinBox>

#include <limits>

/// Shows a number. With a range the whole of it is spread over 100 display units that begin at its lower bound, so that
/// 0..1 reads as a percentage; without one the number is shown as it is.
///
/// A number that nobody changed is answered exactly as it was set, although the display is rounded and keeps to its
/// bounds. The wheel scrolls what lies below and never changes the number, nor does Return.
class CSpinBoxCtrl : public kiv::TDynamicPropertyControl<float, QDoubleSpinBox> {
    Q_OBJECT

public:
    CSpinBoxCtrl(const QString& id, QWidget* parent);

    /// The property's bounds; `low` is below `high`. Before a value is set.
    void SetPropertyRange(double low, double high);

    void SetTypedValue(const float& value) override;
    float GetTypedValue() const override;

    /// Without trailing zeros.
    QString textFromValue(double value) const override;

signals:
    void ChangeProperty(const kiv::String& id, const kiv::CPropertyValuePtr& val);

public slots:
    void OnValueChanged(double value);

protected:
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    double displayOf(float value) const;

    bool m_isSpread = false;
    double m_scale = 1;                                         ///< display units for one unit of the property
    float m_written = 0;                                        ///< the value set last ...
    double m_shown = std::numeric_limits<double>::quiet_NaN();  ///< ... and what the display makes of it
};
