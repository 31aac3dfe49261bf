#pragma once

#include <QCache>
#include <QElapsedTimer>
#include <QHash>
#include <QImage>
#include <QObject>
#include <QSet>
#include <QThreadPool>

/// Pictures of textures at the sizes in which they are drawn, decoded and scaled off the user-interface thread and kept
/// in bounded memory.
class TextureCache : public QObject {
    Q_OBJECT

public:
    explicit TextureCache(QObject* parent = nullptr);
    ~TextureCache() override;

    /// The picture at `path`, in `size` pixels or in its own size where that is smaller. While it is on its way, what
    /// is there of it in another size, or a null image; arrived() tells when to ask again. Null for good for a file
    /// that is no picture, until the file changes.
    QImage tile(const QString& path, const QSize& size);
    /// True when nothing is on its way.
    bool isIdle() const { return m_pending.isEmpty(); }

signals:
    /// When the last one has come, and now and then while many are on their way.
    void arrived();

private:
    void start(const QString& key, const QString& path, const QSize& size);
    void finish(const QString& key, const QString& path, const QImage& image);

    QCache<QString, QImage> m_tiles;
    QHash<QString, QString> m_latest;  // path to the key of the tile that came last
    QSet<QString> m_pending;
    QSet<QString> m_failed;
    QElapsedTimer m_told;
    QThreadPool m_pool;
};
