#include "SpinBoxCtrl.h"

#include <QKeyEvent>
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
    setRange(-Unbounded, Unbounded);
    setFocusPolicy(Qt::StrongFocus);
    connect(this, SIGNAL(valueChanged(double)), this, SLOT(OnValueChanged(double)));
}

void CSpinBoxCtrl::SetPropertyRange(double low, double high)
{
    setRange(low, low + Span);
    m_scale = double(float(Span / (high - low)));
    m_isSpread = true;
}

void CSpinBoxCtrl::SetTypedValue(const float& value)
{
    if (!std::isfinite(value))
        return;
    m_written = value;
    m_shown = QString::number(qBound(minimum(), displayOf(value), maximum()), 'f', decimals()).toDouble();
    setValue(m_shown);
}

// In single precision on the way, as stored numbers are: hosts that make the same computation get the same float.
double CSpinBoxCtrl::displayOf(float value) const
{
    return m_isSpread ? minimum() + double(float(double(value) - minimum())) * m_scale : double(value);
}

// Steps there and back end within a rounding error of where they began.
float CSpinBoxCtrl::GetTypedValue() const
{
    if (std::abs(value() - m_shown) < Smallest / 2)
        return m_written;
    return m_isSpread ? float(double(float(value() - minimum())) / m_scale + minimum()) : float(value());
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

void CSpinBoxCtrl::OnValueChanged(double value)
{
    // A number beyond the bounds is gone once it was changed: coming back to the bound then means the bound.
    const double written = displayOf(m_written);
    if (std::abs(value - m_shown) >= Smallest && (written < minimum() || written > maximum()))
        m_shown = std::numeric_limits<double>::quiet_NaN();
    emit ChangeProperty(GetId(), GetValue());
}

void CSpinBoxCtrl::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

// It would announce what was announced as it was typed.
void CSpinBoxCtrl::keyPressEvent(QKeyEvent* event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && hasAcceptableInput())
        selectAll();
    else
        QDoubleSpinBox::keyPressEvent(event);
}
