#include "BackgroundMenu.h"

#include "ColorButton.h"

#include <QActionGroup>

CBackgroundMenu::CBackgroundMenu(QColorButton& colorButton, QWidget* parent)
    : QMenu(parent), m_colorButton(colorButton), m_choices(new QActionGroup(this))
{
    QAction* sky = m_choices->addAction(addAction(tr("天空")));
    sky->setCheckable(true);
    sky->setChecked(true);
    connect(sky, &QAction::triggered, this, [this] { emit SkyShown(true); });
    addChoice(tr("白色"), Qt::white);
    addChoice(tr("浅灰色"), QColor(200, 200, 200));
    addChoice(tr("深灰色"), QColor(70, 70, 70));
    addChoice(tr("黑色"), Qt::black);
    addChoice(tr("其他颜色…"), QColor());
}

// An invalid colour stands for one that the user is asked for.
void CBackgroundMenu::addChoice(const QString& text, const QColor& color)
{
    QAction* choice = m_choices->addAction(addAction(text));
    choice->setCheckable(true);
    if (color.isValid()) {
        QPixmap swatch(16, 16);
        swatch.fill(color);
        choice->setIcon(swatch);
    }
    connect(choice, &QAction::triggered, this, [this, color] {
        if (color.isValid())
            m_colorButton.setColor(color);
        else
            m_colorButton.slotChangeColor();
        emit SkyShown(false);
    });
}
