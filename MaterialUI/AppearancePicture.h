#pragma once

#include <QColor>
#include <QImage>
#include <QWidget>

class CPictureLoader;

/// Shows the flat look of an appearance: its texture, cut to fill the widget, or its colour. A colour that is not
/// opaque lies on a chequered ground.
class CAppearancePicture : public QWidget {
    Q_OBJECT

public:
    explicit CAppearancePicture(QWidget* parent);

    /// Nothing but a hint.
    void Clear(const QString& hint);
    void ShowColor(const QColor& color);
    /// The colour stands in until the file (a path of this machine) is decoded, and where it cannot be.
    void ShowFile(const QString& file, const QColor& color);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void show(const QColor& color, const QString& hint);
    void takePicture(const QString& file, const QImage& picture);
    void paintGround(QPainter& painter) const;
    void paintPicture(QPainter& painter) const;
    void paintHint(QPainter& painter) const;

    CPictureLoader* m_loader;
    QString m_file;
    QImage m_picture;
    QColor m_color;
    QString m_hint;
};
