#include "AppearanceDrag.h"

#include "AppearanceMime.h"
#include "BrowserLook.h"
#include "ImageDelegate.h"

#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>

namespace {

/// The appearance as its row shows it. A texture that is not decoded yet is left out: a drag does not wait.
QPixmap pictureOf(const CAppearanceEntry& entry, qreal ratio)
{
    const QSize size = QSize(BrowserLook::PictureWidth, BrowserLook::RowHeight) * ratio;
    QPixmap picture(size);
    picture.fill(Qt::lightGray);
    QPainter painter(&picture);
    if (entry.Background().canConvert<QBrush>())
        painter.fillRect(picture.rect(), entry.Background().value<QBrush>());
    const QString texture = entry.Texture().toString();
    if (!texture.isEmpty()) {
        const auto found =
            ImageDelegate::Shared().Thumbnails().Find({ThumbnailKey::MiddleNinth, texture, size}, nullptr, {});
        if (found && !found->isNull())
            painter.drawPixmap(picture.rect(), *found);
    }
    painter.setPen(Qt::darkGray);
    painter.drawRect(picture.rect().adjusted(0, 0, -1, -1));
    painter.end();
    picture.setDevicePixelRatio(ratio);
    return picture;
}

}  // namespace

CAppearanceDrag::CAppearanceDrag(const kiv::CAppearanceLibraryManager& manager, EntryAt entryAt, QObject* parent)
    : QObject(parent), m_manager(manager), m_entryAt(std::move(entryAt))
{
}

void CAppearanceDrag::Watch(QAbstractItemView& view)
{
    view.viewport()->installEventFilter(this);
}

bool CAppearanceDrag::eventFilter(QObject* watched, QEvent* event)
{
    auto* view = qobject_cast<QAbstractItemView*>(watched->parent());
    if (!view)
        return false;
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        press(*view, static_cast<QMouseEvent&>(*event));
        return false;
    case QEvent::MouseButtonRelease:
        m_pressed.reset();
        return false;
    case QEvent::MouseMove:
        return move(*view, static_cast<QMouseEvent&>(*event));
    default:
        return false;
    }
}

void CAppearanceDrag::press(const QAbstractItemView& view, const QMouseEvent& event)
{
    m_pressed = event.button() == Qt::LeftButton ? m_entryAt(view, event.pos()) : nullptr;
    m_position = event.pos();
    if (m_pressed)
        m_selectionBefore = view.selectionModel()->selection();
}

// The view must not see the moving: it would select what lies between.
bool CAppearanceDrag::move(QAbstractItemView& view, const QMouseEvent& event)
{
    if (!m_pressed || !(event.buttons() & Qt::LeftButton))
        return false;
    if ((event.pos() - m_position).manhattanLength() >= QApplication::startDragDistance())
        start(view);
    return true;
}

void CAppearanceDrag::start(QAbstractItemView& view)
{
    const CAppearanceEntryPtr entry = std::exchange(m_pressed, nullptr);
    if (view.selectionMode() == QAbstractItemView::MultiSelection)
        view.selectionModel()->select(m_selectionBefore, QItemSelectionModel::ClearAndSelect);
    auto* drag = new QDrag(&view);
    drag->setMimeData(AppearanceMime::Make(entry->Appearance(), m_manager).release());
    const qreal ratio = view.devicePixelRatioF();
    const QPixmap picture = pictureOf(*entry, ratio);
    drag->setPixmap(picture);
    drag->setHotSpot({BrowserLook::PictureWidth / 2, BrowserLook::RowHeight / 2});
    const QPointer<CAppearanceDrag> alive(this);
    drag->exec(Qt::CopyAction);
    if (alive)
        emit Finished();
}
