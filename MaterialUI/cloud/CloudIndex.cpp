#include "CloudIndex.h"

QString CCloudIndex::FolderName(Folder folder)
{
    return folder == Documents ? QStringLiteral("JsonFiles") : QStringLiteral("TextureFiles");
}

void CCloudIndex::Clear()
{
    const QWriteLocker locker(&m_lock);
    ++m_now.session;
    for (Listing& listing : m_listings) {
        listing.isLoaded = false;
        listing.fileIds.clear();
        listing.changes.clear();
    }
}

CCloudIndex::Moment CCloudIndex::Now() const
{
    const QReadLocker locker(&m_lock);
    return m_now;
}

bool CCloudIndex::Replace(Folder folder, const QVector<NUVSCloudFileItem>& items, const Moment& asked)
{
    const QWriteLocker locker(&m_lock);
    if (asked.session != m_now.session)
        return false;
    Listing& listing = m_listings[folder];
    QHash<QString, QString> fileIds;
    for (const NUVSCloudFileItem& item : items) {
        if (!item.isFolder && listing.changes.value(item.name) <= asked.change)
            fileIds.insert(item.name, item.id);
    }
    for (auto change = listing.changes.cbegin(); change != listing.changes.cend(); ++change) {
        if (change.value() > asked.change && listing.fileIds.contains(change.key()))
            fileIds.insert(change.key(), listing.fileIds.value(change.key()));
    }
    listing.fileIds = fileIds;
    listing.isLoaded = true;
    return true;
}

void CCloudIndex::change(Folder folder, const QString& name)
{
    m_listings[folder].changes.insert(name, ++m_now.change);
}

void CCloudIndex::Add(Folder folder, const QString& name, const QString& fileId)
{
    const QWriteLocker locker(&m_lock);
    m_listings[folder].fileIds.insert(name, fileId);
    change(folder, name);
}

void CCloudIndex::Remove(Folder folder, const QString& name)
{
    const QWriteLocker locker(&m_lock);
    m_listings[folder].fileIds.remove(name);
    change(folder, name);
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
