#pragma once

#include <QString>
#include <QWidget>

class CImagePreviewerCtrl;
class QHBoxLayout;
class QLabel;

/// A picture file: its thumbnail, which a press opens in the texture editor, a button to choose another file, and the
/// file's name. A file can also be dropped on the thumbnail.
class CImageWidget : public QWidget {
    Q_OBJECT

public:
    explicit CImageWidget(QWidget* parent = nullptr);

    CImagePreviewerCtrl& GetThumbnail() const { return *m_thumbnail; }
    /// A path of this machine; announces nothing.
    void SetImage(const QString& path);
    QString GetImage() const;

signals:
    /// The thumbnail of this widget, by its object name, was pressed.
    void ShowTextureEditor(const QString& name);

public slots:
    /// Asks for the texture editor; while there is no picture to be placed, for a picture.
    void OnOpenTextureEditor();
    /// Shows the name of the file that the thumbnail has now.
    void OnChangeImageFile();

protected:
    QHBoxLayout* m_row;  ///< thumbnail and buttons

private:
    CImagePreviewerCtrl* m_thumbnail;
    QLabel* m_name;
};
