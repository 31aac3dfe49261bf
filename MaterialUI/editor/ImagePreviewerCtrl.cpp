#include "ImagePreviewerCtrl.h"

#include <MaterialHelper.h>
#include <PlainTip.h>

#include <kiv/system/StoredPath.h>

#include <QDateTime>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QPixmapCache>
#include <QPointer>
#include <QRegularExpression>
#include <QUrl>

#include <utility>

using kiv::CMaterialHelper;

namespace {

const char* const FileFilter = QT_TRANSLATE_NOOP(
    "CImagePreviewerCtrl", "(*.jpg;*.jpeg;*.png;*.bmp);;JPEG Files(*.jpg;*.jpeg);;PNG Files(*.png);;BMP Files(*.bmp)");

// Qt takes blanks, and not the semicolons of Windows, between the patterns of a filter; with them its own dialog would
// show no file at all.
QString qtFilter(QString filter)
{
    static const QRegularExpression loneSemicolon(QStringLiteral("(?<!;);(?!;)"));
    return filter.replace(loneSemicolon, QStringLiteral(" "));
}

/// Where the user, in any of the thumbnails, found a picture last.
QString& lastFolder()
{
    static QString folder;
    return folder;
}

/// Whether both paths lead to one file; a missing one is no image.
bool isSameImage(const QString& a, const QString& b)
{
    const QString file = QFileInfo(a).canonicalFilePath();
    return !file.isEmpty() && file == QFileInfo(b).canonicalFilePath();
}

/// The file that is dragged; empty for anything but one file that can be a texture. One that may only be moved is left
/// alone, too: it would be gone from where the user had it.
QString draggedFile(const QDropEvent& event)
{
    const QList<QUrl> urls = event.possibleActions() & Qt::CopyAction ? event.mimeData()->urls() : QList<QUrl>();
    const QString file = urls.size() == 1 ? urls.first().toLocalFile() : QString();
    return CMaterialHelper::CheckTextureFileValidity(file) ? file : QString();
}

// The panel is made anew with every selection, and decoding a picture takes longer than all the rest of it.
QPixmap knownThumbnail(const QString& path)
{
    const QFileInfo file(kiv::system::NativePath(path));
    const QString key = QStringLiteral("thumbnail:%1:%2:%3")
                            .arg(file.lastModified().toMSecsSinceEpoch())
                            .arg(file.size())
                            .arg(file.filePath());
    QPixmap thumbnail;
    if (path.isEmpty() || QPixmapCache::find(key, &thumbnail))
        return thumbnail;
    thumbnail = CMaterialHelper::GetTextureIcon(path);
    if (!thumbnail.isNull())
        QPixmapCache::insert(key, thumbnail);
    return thumbnail;
}

// Large pictures are shown from a small copy, which is only needed until it is read.
QPixmap scaledThumbnail(const QString& path)
{
    const QString scaled = CMaterialHelper::ScaledPicture(path);
    if (scaled.isEmpty())
        return CMaterialHelper::GetTextureIcon(path);
    const QPixmap thumbnail = CMaterialHelper::GetTextureIcon(scaled);
    QFile::remove(scaled);
    return thumbnail;
}

}  // namespace

CImagePreviewerCtrl::CImagePreviewerCtrl(QWidget* parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setAccessibleName(tr("Image"));
    setAccessibleDescription(tr("Press Space to place the image"));
    setAcceptDrops(true);
}

void CImagePreviewerCtrl::SetImage(const QString& path)
{
    display(path, knownThumbnail(path));
}

void CImagePreviewerCtrl::display(const QString& path, const QPixmap& thumbnail)
{
    m_path = path;
    m_thumbnail = thumbnail;
    update();
    setToolTip(PlainTip(path));
}

// While the dialog runs the control may be taken away, and the dialog, its child, with it.
void CImagePreviewerCtrl::OnChooseImage()
{
    const QPointer<CImagePreviewerCtrl> alive(this);
    const QPointer<QFileDialog> dialog(
        new QFileDialog(this, tr("Choose Image"), startFolder(), qtFilter(tr(FileFilter))));
    dialog->setFileMode(QFileDialog::ExistingFile);
    const bool isChosen = dialog->exec() == QDialog::Accepted;
    const QString chosen = isChosen && dialog ? dialog->selectedFiles().value(0) : QString();
    delete dialog;
    if (alive && !chosen.isEmpty() && CMaterialHelper::CheckTextureFileValidity(chosen))
        takeImage(chosen);
}

QString CImagePreviewerCtrl::startFolder() const
{
    if (!m_path.isEmpty())
        return QFileInfo(kiv::system::NativePath(m_path)).absolutePath();
    if (!lastFolder().isEmpty())
        return lastFolder();
    return kiv::system::NativePath(QString::fromLocal8Bit(m_defaultFolder.c_str()));
}

void CImagePreviewerCtrl::takeImage(const QString& path)
{
    lastFolder() = QFileInfo(path).absolutePath();
    display(path, scaledThumbnail(path));
    emit ChangeImageFile();
}

void CImagePreviewerCtrl::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (m_thumbnail.isNull()) {
        painter.fillRect(rect(), QBrush(Qt::gray, Qt::SolidPattern));
    } else {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawPixmap(rect(), m_thumbnail);
    }
    if (hasFocus()) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void CImagePreviewerCtrl::mousePressEvent(QMouseEvent* event)
{
    m_isPressed = event->button() == Qt::LeftButton;
}

// A double click that closed the file dialog leaves a release for what lies below it.
void CImagePreviewerCtrl::mouseReleaseEvent(QMouseEvent* event)
{
    if (std::exchange(m_isPressed, false) && rect().contains(event->pos()))
        emit Clicked();
}

void CImagePreviewerCtrl::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        emit Clicked();
    else
        QWidget::keyPressEvent(event);
}

void CImagePreviewerCtrl::dragEnterEvent(QDragEnterEvent* event)
{
    if (draggedFile(*event).isEmpty())
        return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void CImagePreviewerCtrl::dropEvent(QDropEvent* event)
{
    const QString file = draggedFile(*event);
    if (file.isEmpty())
        return;
    // Whatever was proposed: the answer to a move would be that the user's own file is deleted.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    if (!isSameImage(file, m_path))
        takeImage(file);
}
