#pragma once

#include "ThumbnailStore.h"

#include <QItemDelegate>
#include <QPixmap>

#include <memory>

class QStyle;

/// Paints the picture cells of the appearance table: the middle of the texture of role 255, the cloud mark of role 254
/// and the picture of role 511, over what an item paints by itself (a colour is its background). A texture that is not
/// decoded yet is a grey cell until it arrives.
class ImageDelegate : public QItemDelegate {
    Q_OBJECT

public:
    /// The one delegate of all browsers, with their thumbnails; made on first use, gone with the application object.
    static ImageDelegate& Shared();

    explicit ImageDelegate(QObject* parent = nullptr);
    ~ImageDelegate() override;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    CThumbnailStore& Thumbnails() const { return *m_thumbnails; }

private:
    void drawFile(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index,
                  const ThumbnailKey& key) const;
    QStyle& style() const;

    QPixmap m_cloud;
    /// The style whose pixmap drawing is used; null where there is none, then it is the application's.
    std::unique_ptr<QStyle> m_style;
    std::unique_ptr<CThumbnailStore> m_thumbnails;
};
