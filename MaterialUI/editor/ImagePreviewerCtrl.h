#pragma once

#include <QPixmap>
#include <QString>
#include <QWidget>

#include <string>

/// The thumbnail of a picture file, stretched to the widget. A click, or Space, is announced; a file dropped on it is
/// taken like a chosen one.
class CImagePreviewerCtrl : public QWidget {
    Q_OBJECT

public:
    explicit CImagePreviewerCtrl(QWidget* parent = nullptr);

    /// Shows the file (a path of this machine); an empty path or what is no picture shows grey. Emits nothing.
    void SetImage(const QString& path);
    const QString& GetImage() const { return m_path; }

    /// Where the user looks for files while there is no image and none was chosen before; local 8-bit.
    void SetDefaultFolder(const std::string& folder) { m_defaultFolder = folder; }

signals:
    /// The user chose another file.
    void ChangeImageFile();
    /// By mouse or keyboard.
    void Clicked();

public slots:
    /// Asks for a file. Cancelling and what cannot be a texture change nothing.
    void OnChooseImage();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    QString startFolder() const;
    void takeImage(const QString& path);
    void display(const QString& path, const QPixmap& thumbnail);

    QString m_path;
    QPixmap m_thumbnail;
    std::string m_defaultFolder;
    bool m_isPressed = false;
};
