#include "ImageDelegate.h"

#include "ItemRoles.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>
#include <QStyleFactory>

static void initResources()
{
    Q_INIT_RESOURCE(materialui_browser);
}

namespace {

const QColor s_placeholder(0xec, 0xee, 0xf1);

QPointer<ImageDelegate> s_shared;

// Pixmaps and threads have to be gone before the application object is.
void deleteShared()
{
    delete s_shared.data();
}

QPixmap cloudMark()
{
    initResources();
    return QPixmap(qApp->devicePixelRatio() > 1 ? ":/Resources/Cloud@2x.png" : ":/Resources/Cloud.png");
}

}  // namespace

ImageDelegate& ImageDelegate::Shared()
{
    if (!s_shared) {
        s_shared = new ImageDelegate;
        qAddPostRoutine(deleteShared);
    }
    return *s_shared;
}

ImageDelegate::ImageDelegate(QObject* parent)
    : QItemDelegate(parent), m_cloud(cloudMark()), m_style(QStyleFactory::create("WindowsVista")),
      m_thumbnails(std::make_unique<CThumbnailStore>())
{
}

ImageDelegate::~ImageDelegate() = default;

QStyle& ImageDelegate::style() const
{
    return m_style ? *m_style : *QApplication::style();
}

void ImageDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QItemDelegate::paint(painter, option, index);
    const QString picture = index.data(PictureRole).toString();
    const QString texture = index.data(TextureRole).toString();
    const QSize pixels = option.rect.size() * painter->device()->devicePixelRatioF();
    painter->save();
    // A style's pixmap drawing runs over the right edge of its rectangle when the pixmap is larger.
    painter->setClipRect(option.rect, Qt::IntersectClip);
    if (picture.isEmpty() && !texture.isEmpty())
        drawFile(*painter, option, index, {ThumbnailKey::MiddleNinth, texture, pixels});
    if (index.data(CloudRole).toBool())
        style().drawItemPixmap(painter, option.rect, Qt::AlignRight | Qt::AlignBottom, m_cloud);
    if (!picture.isEmpty())
        drawFile(*painter, option, index, {ThumbnailKey::Unscaled, picture, pixels});
    painter->restore();
}

void ImageDelegate::drawFile(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index,
                             const ThumbnailKey& key) const
{
    auto* view = qobject_cast<QAbstractItemView*>(const_cast<QWidget*>(option.widget));
    std::optional<QPixmap> thumbnail = m_thumbnails->Find(key, view, index);
    if (!thumbnail) {
        painter.fillRect(option.rect, s_placeholder);
        return;
    }
    thumbnail->setDevicePixelRatio(painter.device()->devicePixelRatioF());
    style().drawItemPixmap(&painter, option.rect, Qt::AlignHCenter | Qt::AlignVCenter, *thumbnail);
}
