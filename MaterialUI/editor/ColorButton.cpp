#include "ColorButton.h"

#include <QColorDialog>
#include <QPointer>

namespace {

constexpr int IconSide = 16;

}  // namespace

QColorButton::QColorButton(QWidget* parent) : QPushButton(parent)
{
    connect(this, SIGNAL(clicked()), this, SLOT(slotChangeColor()));
}

void QColorButton::setColor(const QColor& color)
{
    if (color == m_color)
        return;
    m_color = color;
    showColor();
    emit colorChanged();
}

void QColorButton::showColor()
{
    if (m_showName)
        QPushButton::setText(m_color.name());
    if (m_showToolTip)
        setToolTip(m_color.name());
    QPixmap filled(IconSide, IconSide);
    filled.fill(m_color);
    setIcon(filled);
}

void QColorButton::setText(const QString& text)
{
    m_text = text;
    QPushButton::setText(text);
}

void QColorButton::setShowName(bool show)
{
    m_showName = show;
    QPushButton::setText(show ? m_color.name() : m_text);
}

void QColorButton::setShowToolTip(bool show)
{
    m_showToolTip = show;
    setToolTip(show ? m_color.name() : QString());
}

QString QColorButton::rgbText(const QColor& color)
{
    return QStringLiteral("RGB(%1,%2,%3)").arg(color.red()).arg(color.green()).arg(color.blue());
}

// While the dialog runs the button may be taken away, and the dialog, its child, with it.
void QColorButton::slotChangeColor()
{
    const QPointer<QColorButton> alive(this);
    const QPointer<QColorDialog> dialog(new QColorDialog(m_color, this));
    const bool isChosen = dialog->exec() == QDialog::Accepted;
    const QColor chosen = dialog ? dialog->selectedColor() : QColor();
    delete dialog;
    if (!alive || !isChosen || !chosen.isValid())
        return;
    setColor(chosen);
    if (alive)
        setText(rgbText(chosen));
}
