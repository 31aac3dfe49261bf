#include "SpinBoxCtrl.h"

#include <QWheelEvent>

#include <cmath>

namespace {

constexpr double Span = 100;
constexpr int Decimals = 3;
constexpr double Smallest = 1e-3;  // difference that is shown
constexpr double Unbounded = 1e6;

}  // namespace

CSpinBoxCtrl::CSpinBoxCtrl(const QString& id, QWidget* parent) : TDynamicPropertyControl(id, parent)
{
    setDecimals(Decimals);
    setMaximum(Unbounded);
    setFocusPolicy(Qt::StrongFocus);
    connect(this, SIGNAL(valueChanged(double)), this, SLOT(OnValueChanged(double)));
}

void CSpinBoxCtrl::SetPropertyRange(double low, double high)
{
    setRange(low, low + Span);
    m_scale = double(float(Span / (high - low)));
}

// In single precision on the way, as stored numbers are: hosts that make the same computation get the same float.
void CSpinBoxCtrl::SetTypedValue(const float& value)
{
    if (!std::isfinite(value))
        return;
    m_written = value;
    m_shown = shownFor(value);
    setValue(m_shown);
}

double CSpinBoxCtrl::shownFor(float value) const
{
    const double shown = minimum() + double(float(double(value) - minimum())) * m_scale;
    return qBound(minimum(), QString::number(shown, 'f', decimals()).toDouble(), maximum());
}

// Steps there and back end within a rounding error of where they began.
float CSpinBoxCtrl::GetTypedValue() const
{
    if (std::abs(value() - m_shown) < Smallest / 2)
        return m_written;
    return float(double(float(value() - minimum())) / m_scale + minimum());
}

QString CSpinBoxCtrl::textFromValue(double value) const
{
    const QString zero = locale().zeroDigit();
    QString text = QDoubleSpinBox::textFromValue(value);
    if (!text.contains(locale().decimalPoint()))
        return text;
    while (text.endsWith(zero))
        text.chop(1);
    if (text.endsWith(locale().decimalPoint()))
        text.chop(1);
    return text;
}

void CSpinBoxCtrl::OnValueChanged(double /*value*/)
{
    emit ChangeProperty(GetId(), GetValue());
}

void CSpinBoxCtrl::wheelEvent(QWheelEvent* event)
{
    if (hasFocus())
        QDoubleSpinBox::wheelEvent(event);
    else
        event->ignore();
}
