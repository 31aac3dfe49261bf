#include "CloudIndex.h"

QString CCloudIndex::FolderName(Folder folder)
{
    return folder == Documents ? QStringLiteral("JsonFiles") : QStringLiteral("TextureFiles");
}

void CCloudIndex::Clear()
{
    const QWriteLocker locker(&m_lock);
    for (Listing& listing : m_listings) {
        listing.isLoaded = false;
        listing.fileIds.clear();
    }
}

void CCloudIndex::Replace(Folder folder, const QVector<NUVSCloudFileItem>& items)
{
    QHash<QString, QString> fileIds;
    for (const NUVSCloudFileItem& item : items) {
        if (!item.isFolder)
            fileIds.insert(item.name, item.id);
    }
    const QWriteLocker locker(&m_lock);
    m_listings[folder].fileIds = fileIds;
    m_listings[folder].isLoaded = true;
}

void CCloudIndex::Add(Folder folder, const QString& name, const QString& fileId)
{
    const QWriteLocker locker(&m_lock);
    m_listings[folder].fileIds.insert(name, fileId);
}

void CCloudIndex::Remove(Folder folder, const QString& name)
{
    const QWriteLocker locker(&m_lock);
    m_listings[folder].fileIds.remove(name);
}

bool CCloudIndex::IsLoaded(Folder folder) const
{
    const QReadLocker locker(&m_lock);
    return m_listings[folder].isLoaded;
}

QString CCloudIndex::Find(Folder folder, const QString& name) const
{
    const QReadLocker locker(&m_lock);
    return m_listings[folder].fileIds.value(name);
}

void CCloudIndex::AddArrived(Folder folder, const QString& text)
{
    const QWriteLocker locker(&m_lock);
    m_listings[folder].arrived.append(text);
}

QStringList CCloudIndex::GetArrived(Folder folder, int from) const
{
    const QReadLocker locker(&m_lock);
    return m_listings[folder].arrived.mid(from);
}
