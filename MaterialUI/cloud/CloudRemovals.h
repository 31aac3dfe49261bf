#pragma once

#include <QHash>
#include <QMutex>
#include <QSet>
#include <QStringList>

/// Favourites that were removed here and whose copies in the cloud are still to be taken away. Kept in a file of the
/// favourites' folder, so that what was removed without a connection does not come back. Any thread.
class CCloudRemovals {
public:
    /// Reads the file of the folder; the same folder again changes nothing.
    void SetFolder(const QString& favorites);
    void Add(const QString& id, const QStringList& textureNames);
    /// It is gone from the cloud, or a favourite again.
    void Forget(const QString& id);
    bool Contains(const QString& id) const;

    /// The favourites, with the names of their textures, of which nothing was begun since the last Restart(); they
    /// count as begun from here on.
    QHash<QString, QStringList> Begin();
    bool HasFresh() const;
    /// What failed or was never answered may be begun again.
    void Restart();

private:
    void read();
    void write() const;

    mutable QMutex m_mutex;
    QString m_file;
    QHash<QString, QStringList> m_textures;  ///< by id
    QSet<QString> m_begun;
};
