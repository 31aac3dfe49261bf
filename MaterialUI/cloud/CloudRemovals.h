#pragma once

#include <QHash>
#include <QMutex>
#include <QObject>
#include <QSet>
#include <QStringList>

/// Favourites that were removed here and whose copies in the cloud are still to be taken away. Kept in a file of the
/// favourites' folder, so that what was removed without a connection does not come back: written once for all changes
/// of a turn of the event loop, and before a removal begins. Any thread; the file is written on the one that made this.
class CCloudRemovals {
public:
    CCloudRemovals() = default;
    ~CCloudRemovals();
    CCloudRemovals(const CCloudRemovals&) = delete;
    CCloudRemovals& operator=(const CCloudRemovals&) = delete;

    /// Reads the file of the folder; the same folder again changes nothing.
    void SetFolder(const QString& favorites);
    void Add(const QString& id, const QStringList& textureNames);
    /// It is gone from the cloud, or a favourite again.
    void Forget(const QString& id);
    bool Contains(const QString& id) const;

    struct Removal {
        QString id;
        QStringList textureNames;
    };
    /// Whether there is one that was not begun since the last Restart().
    bool HasFresh() const;
    /// Such a one, which counts as begun from here on; empty when there is none.
    Removal Begin();
    /// What failed or was never answered may be begun again.
    void Restart();

private:
    void read();
    void change();
    void flush();
    void write();

    mutable QMutex m_mutex;
    QString m_file;
    QHash<QString, QStringList> m_textures;  ///< by id
    QSet<QString> m_begun;
    QObject m_turn;  ///< its thread writes
    bool m_isChanged = false;
};
