#include "CloudService.h"

#include "IndexCallbacks.h"
#include "RemovalCallback.h"
#include "UploadCallbacks.h"
#include "UploadRecords.h"
#include "UploadWorker.h"

#include <nuvs/NUVSCloudService.h>

#include <QFileInfo>

namespace {

const QString DocumentSuffix = QStringLiteral(".json");
constexpr qint64 ClockTolerance = 2;  // seconds: servers tell whole ones

// Favourites are named after what they were made of, so a file of the same name and size is the same unless it was
// edited here since.
bool isSameDocument(const QFileInfo& local, const NUVSCloudFileItem& item)
{
    const bool isNewer = item.modified.isValid() && local.lastModified() > item.modified.addSecs(ClockTolerance);
    return local.size() == item.size && !isNewer;
}

// Made as the module is loaded: the login timer belongs to the thread of the user interface.
const CCloudService* const atLoad = &CCloudService::Instance();

}  // namespace

CCloudService& CCloudService::Instance()
{
    static CCloudService service;
    return service;
}

CCloudService::CCloudService() = default;
CCloudService::~CCloudService() = default;

void CCloudService::Open(const CloudFolders& folders)
{
    Q_UNUSED(atLoad)
    {
        const QWriteLocker locker(&m_lock);
        m_isOpen = true;
        m_documentCount = 0;
        m_textureCount = 0;
        m_folders = folders;
    }
    m_downloads.SetFolders(folders);
    m_removals.SetFolder(folders.favorites);
}

// Called where the login was answered, which is not where the timer lives.
void CCloudService::StartLoginTimer()
{
    QMetaObject::invokeMethod(
        this, [this] { announceLogin(); }, Qt::QueuedConnection);
}

// The timer repeats without a pause until somebody stops it.
void CCloudService::announceLogin()
{
    m_isLoginNews = m_dialogCount == 0;
    if (!m_isLoginNews)
        m_loginTimer.start();
}

void CCloudService::Attach()
{
    ++m_dialogCount;
    if (m_isLoginNews)
        announceLogin();
}

void CCloudService::Detach()
{
    --m_dialogCount;
    if (m_dialogCount == 0 && m_loginTimer.isActive()) {
        m_loginTimer.stop();
        m_isLoginNews = true;
    }
}

CloudFolders CCloudService::folders() const
{
    const QReadLocker locker(&m_lock);
    return m_folders;
}

// ---- uploading

void CCloudService::StartUpload(const QStringList& documents, const QStringList& textures)
{
    if (documents.isEmpty())
        return;
    m_worker.reset();
    m_registry.Close();  // the folders of the one before must not take files of this one
    m_worker = std::make_unique<CUploadWorker>(documents, textures);
}

void CCloudService::PeriodicStep()
{
    uploadTick();
    m_downloads.StartNext();
}

void CCloudService::uploadTick()
{
    const int index = m_registry.TakeNext();
    if (index < 0 || !m_worker || index >= m_worker->Count())
        return;
    const QString& document = m_worker->Document(index);
    auto* callback = new UserLibUploadCallback(document, m_worker->Texture(index));
    getNUVSCloudService()->fileService()->upload(m_registry.GetJsonFolder(), document, callback);
}

void CCloudService::CountUpload()
{
    const QWriteLocker locker(&m_lock);
    ++m_documentCount;
    ++m_textureCount;
}

int CCloudService::CountDocuments() const
{
    const QReadLocker locker(&m_lock);
    return m_documentCount;
}

int CCloudService::CountTextures() const
{
    const QReadLocker locker(&m_lock);
    return m_textureCount;
}

// ---- what the cloud has

void CCloudService::LoadTextureIndex()
{
    getNUVSCloudService()->fileService()->children({}, new IndexDownloadCallback(CCloudIndex::Textures, m_index.Now()));
}

void CCloudService::LoadDocuments()
{
    getNUVSCloudService()->fileService()->children({},
                                                   new IndexDownloadCallback(CCloudIndex::Documents, m_index.Now()));
}

void CCloudService::Restart()
{
    m_index.Clear();
    m_downloads.Restart();
    m_removals.Restart();
}

void CCloudService::TakeListing(CCloudIndex::Folder folder, const QVector<NUVSCloudFileItem>& items,
                                const CCloudIndex::Moment& asked)
{
    if (!m_index.Replace(folder, items, asked))
        return;
    if (folder == CCloudIndex::Documents) {
        for (const NUVSCloudFileItem& item : items)
            takeDocument(item);
    }
    m_downloads.StartNext();
}

// What was changed here stays as it is and is sent with the next synchronisation.
void CCloudService::takeDocument(const NUVSCloudFileItem& item)
{
    if (item.isFolder || !item.name.endsWith(DocumentSuffix))
        return;
    const QString id = item.name.chopped(DocumentSuffix.size());
    const bool isGone = m_index.Find(CCloudIndex::Documents, item.name).isEmpty();
    if (isGone || m_removals.Contains(id))
        return;
    const CloudFolders place = folders();
    if (place.favorites.isEmpty())
        return;
    const QFileInfo local(place.document(id));
    if (!local.exists()) {
        m_downloads.Request(CCloudIndex::Documents, item.name);
    } else if (isSameDocument(local, item)) {
        if (!QFileInfo::exists(place.record(id)))
            UploadRecords::Keep(local.filePath(), UploadRecords::StateOf(local.filePath()));
        m_index.AddArrived(CCloudIndex::Documents, id);
    }
}

// ---- removing

void CCloudService::RemoveFavorite(const QString& id, const QStringList& textureNames)
{
    m_removals.Add(id, textureNames);
}

void CCloudService::KeepFavorite(const QString& id)
{
    m_removals.Forget(id);
}

CloudCopies CCloudService::copiesOf(const QString& id, const QStringList& textureNames,
                                    const std::function<bool(const QString&)>& isUsed) const
{
    CloudCopies copies{id, m_index.Find(CCloudIndex::Documents, id + DocumentSuffix), {}, {}};
    for (const QString& name : textureNames) {
        const QString file = isUsed(name) ? QString() : m_index.Find(CCloudIndex::Textures, name);
        if (file.isEmpty())
            continue;
        copies.textureNames.append(name);
        copies.textureFiles.append(file);
    }
    return copies;
}

// What is being sent in this instant is not known to be there yet, and what is being brought may use the same textures.
bool CCloudService::HasRemovals() const
{
    return m_status.IsIdle() && !m_downloads.AreDocumentsUnderWay() && m_removals.HasFresh() &&
           m_index.IsLoaded(CCloudIndex::Documents) && m_index.IsLoaded(CCloudIndex::Textures);
}

void CCloudService::RunRemoval(const std::function<bool(const QString&)>& isUsed)
{
    const CCloudRemovals::Removal removal = m_removals.Begin();
    const CloudCopies copies = copiesOf(removal.id, removal.textureNames, isUsed);
    if (copies.isEmpty()) {
        m_removals.Forget(removal.id);
    } else {
        m_status.CountRemoval();
        RemovalCallback::Begin(copies);
    }
}

void CCloudService::EndRemoval(const QString& id)
{
    m_removals.Forget(id);
    m_status.CountRemovalEnd(true);
    emit onRemoveAppearance(id);
}
