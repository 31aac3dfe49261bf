#include "CloudDownloads.h"

#include "CloudCallback.h"
#include "CloudService.h"

#include <nuvs/NUVSCloudService.h>

#include <kiv/system/StoredPath.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMutexLocker>
#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr qint64 MaxDocument = 16 << 20;

class TextureDownloadCallback : public CCloudCallback<NUVSBaseInfo> {
public:
    TextureDownloadCallback(CCloudIndex::Folder folder, const QString& name) : m_folder(folder), m_name(name) {}

protected:
    void Answered(const NUVSBaseInfo& result, bool /*isSessionLost*/) override
    {
        CCloudDownloads& downloads = CCloudService::Instance().GetDownloads();
        downloads.End(m_folder, m_name, result.code.isEmpty());
        downloads.StartNext();
    }
    // The next one is begun by the dialog's timer: whatever the reason was, it is not over in this instant.
    void NotAnswered() override { CCloudService::Instance().GetDownloads().End(m_folder, m_name, false); }

private:
    CCloudIndex::Folder m_folder;
    QString m_name;
};

// Under another name it would be a favourite that can neither be sent nor removed.
bool isDocument(const QString& path)
{
    QByteArray bytes;
    QString reason;
    const QString id = QFileInfo(path).completeBaseName();
    return kiv::system::ReadWholeFile(path, MaxDocument, bytes, reason) && !id.isEmpty() &&
           QJsonDocument::fromJson(bytes).object().value(QLatin1String("id")).toString() == id;
}

// Textures are named after their content. Other names tell nothing about it.
bool isNamedTexture(const QString& path, const QString& name)
{
    static const QRegularExpression digest(QStringLiteral("^[0-9a-fA-F]{40}$"));
    if (!digest.match(name).hasMatch())
        return true;
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha1);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file) &&
           hash.result().toHex().compare(name.toLatin1(), Qt::CaseInsensitive) == 0;
}

}  // namespace

void CCloudDownloads::SetFolders(const CloudFolders& folders)
{
    const QMutexLocker locker(&m_mutex);
    if (folders.favorites == m_folders.favorites && folders.textures == m_folders.textures)
        return;
    m_folders = folders;
    m_queue.clear();
    for (int folder : {CCloudIndex::Documents, CCloudIndex::Textures}) {
        m_requested[folder].clear();
        m_failed[folder].clear();
    }
}

void CCloudDownloads::Request(CCloudIndex::Folder folder, const QString& name)
{
    const QMutexLocker locker(&m_mutex);
    const Item item{folder, name};
    if (m_folders.favorites.isEmpty() || m_requested[folder].contains(name) ||
        !kiv::system::IsPlainName(name.toStdWString()))
        return;
    m_requested[folder].insert(name);
    if (QFileInfo::exists(place(item, m_folders)))
        return;
    m_queue.enqueue(item);
    m_information.CountRequest();
}

void CCloudDownloads::Restart()
{
    const QMutexLocker locker(&m_mutex);
    for (int folder : {CCloudIndex::Documents, CCloudIndex::Textures}) {
        m_requested[folder].subtract(m_failed[folder]);
        m_failed[folder].clear();
    }
}

void CCloudDownloads::StartNext()
{
    QString fileId;
    QString target;
    Item item;
    {
        const QMutexLocker locker(&m_mutex);
        if (m_isBusy || !getNUVSCloudService()->accountService()->isLogin())
            return;
        item = takeNext(fileId);
        if (!item.isValid())
            return;
        m_isBusy = true;
        m_current = item;
        m_currentFolders = m_folders;
        target = arrival(item, m_folders);
    }
    getNUVSCloudService()->fileService()->download(fileId, target, new TextureDownloadCallback(item.folder, item.name));
}

// What waits for a folder that was not listed yet stays in its place.
CCloudDownloads::Item CCloudDownloads::takeNext(QString& fileId)
{
    for (int i = 0; i < m_queue.size();) {
        if (!m_index.IsLoaded(m_queue[i].folder)) {
            ++i;
            continue;
        }
        const Item item = m_queue.takeAt(i);
        fileId = m_index.Find(item.folder, item.name);
        if (!fileId.isEmpty())
            return item;
        m_failed[item.folder].insert(item.name);  // the cloud has it not
        m_information.CountEnd();
    }
    return {};
}

// Looking through a large file takes a while, during which dialogs may ask for others.
void CCloudDownloads::End(CCloudIndex::Folder folder, const QString& name, bool isWhole)
{
    const Item item{folder, name};
    CloudFolders folders;
    {
        const QMutexLocker locker(&m_mutex);
        folders = m_currentFolders;
    }
    const bool isThere = isWhole && putInPlace(item, folders);
    if (isThere)
        m_index.AddArrived(folder, folder == CCloudIndex::Documents ? QFileInfo(name).completeBaseName() : name);
    const QMutexLocker locker(&m_mutex);
    m_isBusy = false;
    m_information.CountEnd();
    if (!isThere)
        m_failed[folder].insert(name);
}

bool CCloudDownloads::AreDocumentsUnderWay() const
{
    const QMutexLocker locker(&m_mutex);
    const auto isDocument = [](const Item& item) { return item.folder == CCloudIndex::Documents; };
    return (m_isBusy && isDocument(m_current)) || std::any_of(m_queue.begin(), m_queue.end(), isDocument);
}

bool CCloudDownloads::IsDocumentMissing() const
{
    const QMutexLocker locker(&m_mutex);
    return !m_failed[CCloudIndex::Documents].isEmpty();
}

QString CCloudDownloads::place(const Item& item, const CloudFolders& folders)
{
    const QString& folder = item.folder == CCloudIndex::Documents ? folders.favorites : folders.textures;
    return folder + '/' + item.name;
}

QString CCloudDownloads::arrival(const Item& item, const CloudFolders& folders)
{
    const bool isDocument = item.folder == CCloudIndex::Documents;
    return folders.records() + (isDocument ? QStringLiteral("/") : QStringLiteral("/UserLib Textures/")) + item.name;
}

// A document stays where it arrived, too: as the record of what the cloud has.
bool CCloudDownloads::putInPlace(const Item& item, const CloudFolders& folders)
{
    const QString from = arrival(item, folders);
    const QString to = place(item, folders);
    QString reason;
    const bool isTexture = item.folder == CCloudIndex::Textures;
    const bool isGood = isTexture ? isNamedTexture(from, item.name) : isDocument(from);
    QDir().mkpath(QFileInfo(to).path());
    const bool isThere =
        isGood && (QFileInfo::exists(to) ||
                   (isTexture ? QFile::rename(from, to) : kiv::system::CopyWholeFile(from, to, MaxDocument, reason)));
    if (!isThere)
        QFile::remove(from);
    return isThere;
}
