#pragma once

#include "Thumbnail.h"

#include <QAbstractItemView>
#include <QCache>
#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QPersistentModelIndex>
#include <QPixmap>
#include <QPointer>
#include <QThreadPool>
#include <QVector>

#include <optional>

/// Decodes thumbnails off the user-interface thread and keeps the latest in a bounded cache. A file that gives no
/// picture is remembered as such until it changes, so that nothing is tried again and again. User-interface thread.
class CThumbnailStore : public QObject {
    Q_OBJECT

public:
    /// What the cache may hold, in bytes of pixels.
    static constexpr int CacheBytes = 32 * 1024 * 1024;

    explicit CThumbnailStore(QObject* parent = nullptr);
    /// Waits for the pictures that are being decoded; nothing reaches a dead object.
    ~CThumbnailStore() override;

    /// The thumbnail if it is at hand (null when the file gives none). Otherwise nothing: it is then made, what is
    /// asked for last first, and the cell is painted again when it is there. A request whose cell has been scrolled
    /// away by then is dropped. A view of null means that somebody paints the cell elsewhere; nobody is told then.
    std::optional<QPixmap> Find(const ThumbnailKey& key, QAbstractItemView* view, const QModelIndex& index);

    /// Has the file looked at again when it is painted next; otherwise that is done every few seconds of painting.
    void Recheck(const QString& file);

private:
    struct Entry {
        QPixmap pixmap;
        FileStamp stamp;
        QElapsedTimer checked;
    };
    struct Asker {
        QPointer<QAbstractItemView> view;
        QPersistentModelIndex index;
        bool isElsewhere = false;

        bool isVisible() const;
    };
    struct Request {
        QVector<Asker> askers;
        quint64 serial = 0;
        bool isRunning = false;
    };
    struct Result {
        FileStamp stamp;
        bool isChanged = false;
        QImage image;
    };

    void ask(const ThumbnailKey& key, QAbstractItemView* view, const QModelIndex& index);
    void startNext();
    void dropInvisible();
    QHash<ThumbnailKey, Request>::iterator lastAsked();
    void start(const ThumbnailKey& key);
    void finish(const ThumbnailKey& key, const Result& result);
    void store(const ThumbnailKey& key, const Result& result);

    QCache<ThumbnailKey, Entry> m_cache{CacheBytes};
    QHash<ThumbnailKey, Request> m_requests;
    quint64 m_serial = 0;
    int m_running = 0;
    QThreadPool m_pool;
};
