#pragma once

#include <QColor>
#include <QPushButton>

/// A button with a colour, which a click lets the user choose.
class QColorButton : public QPushButton {
    Q_OBJECT

public:
    explicit QColorButton(QWidget* parent = nullptr);

    /// A colour that differs from the current one, which is invalid at first, is announced by colorChanged().
    void setColor(const QColor& color);
    const QColor& color() const { return m_color; }

    /// Shows the text, and shows it again when the colour's name is no longer shown.
    void setText(const QString& text);

    /// Whether a new colour's name becomes the text. On at first.
    void setShowName(bool show);
    bool isShowName() const { return m_showName; }
    /// Whether a new colour's name becomes the tool tip. On at first.
    void setShowToolTip(bool show);
    bool isShowToolTip() const { return m_showToolTip; }

    /// "RGB(r,g,b)", each 0..255.
    static QString rgbText(const QColor& color);

signals:
    void colorChanged();

public slots:
    /// Lets the user choose. Cancelling changes nothing.
    void slotChangeColor();

private:
    void showColor();

    bool m_showName = true;
    bool m_showToolTip = true;
    QColor m_color;
    QString m_text;
};
