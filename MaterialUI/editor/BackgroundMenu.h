#pragma once

#include <QMenu>

class QColorButton;

/// Lets the user choose what is seen behind the preview: the sky, or a colour, which is then the button's.
class CBackgroundMenu : public QMenu {
    Q_OBJECT

public:
    /// The button is borrowed and must outlive the menu.
    CBackgroundMenu(QColorButton& colorButton, QWidget* parent);

signals:
    /// Whether the sky is to be seen. A new colour is told by the button.
    void SkyShown(bool shown);

private:
    void addChoice(const QString& text, const QColor& color);

    QColorButton& m_colorButton;
    QActionGroup* m_choices;
};
