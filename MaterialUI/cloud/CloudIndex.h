#pragma once

#include <nuvs/NUVSRecords.h>

#include <QHash>
#include <QReadWriteLock>
#include <QStringList>

/// What is known of the two folders of the cloud, and what cloud and machine were found to share. Any thread.
class CCloudIndex {
public:
    enum Folder { Documents, Textures };
    static QString FolderName(Folder folder);

    /// Forgets the folders, not what arrived: they may belong to another account now.
    void Clear();
    /// When a listing was asked for.
    struct Moment {
        int session = 0;
        int change = 0;
    };
    Moment Now() const;
    /// Takes over a whole listing. What was added or removed after the listing was asked for stays so. False, changing
    /// nothing, when Clear() came in between.
    bool Replace(Folder folder, const QVector<NUVSCloudFileItem>& items, const Moment& asked);
    void Add(Folder folder, const QString& name, const QString& fileId);
    void Remove(Folder folder, const QString& name);
    /// Whether a listing was taken over since the last Clear().
    bool IsLoaded(Folder folder) const;
    /// The identifier of the file; empty when the cloud is not known to have it.
    QString Find(Folder folder, const QString& name) const;

    /// A favourite's id that the cloud has, or the name of a texture that was brought from there.
    void AddArrived(Folder folder, const QString& text);
    /// What arrived, from the given position on: each reader keeps his own position.
    QStringList GetArrived(Folder folder, int from) const;

private:
    struct Listing {
        bool isLoaded = false;
        QHash<QString, QString> fileIds;  ///< by name
        QHash<QString, int> changes;      ///< numbers of what was added or removed from here, by name
        QStringList arrived;
    };
    void change(Folder folder, const QString& name);

    mutable QReadWriteLock m_lock;
    Moment m_now;
    Listing m_listings[2];
};
