#include "LocalStorage.h"

#include "DownloadTarget.h"
#include "FileCopy.h"
#include "RemoteName.h"

#include <kiv/system/StoredPath.h>

#include <QDateTime>
#include <QSaveFile>

#include <filesystem>

namespace nuvs {

namespace {

constexpr auto Everything = QDir::Dirs | QDir::Files | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

std::filesystem::path machinePath(const QString& path)
{
#ifdef Q_OS_WIN
    return path.toStdWString();
#else
    return QFile::encodeName(path).toStdString();
#endif
}

// Replaces a file that is there, which QFile does not.
bool renameFile(const QString& from, const QString& to)
{
    std::error_code error;
    std::filesystem::rename(machinePath(from), machinePath(to), error);
    return !error;
}

bool removeEntry(const QString& path)
{
    std::error_code error;
    std::filesystem::remove_all(machinePath(path), error);
    return !error;
}

NUVSCloudFileItem itemOf(const QFileInfo& info, const QString& folder)
{
    NUVSCloudFileItem item;
    item.name = info.fileName();
    item.id = ChildId(folder, item.name);
    item.isFolder = info.isDir();
    item.size = item.isFolder ? -1 : info.size();
    item.modified = info.lastModified().toUTC();
    return item;
}

bool isShown(const QFileInfo& info)
{
    return !info.isSymLink() && (info.isDir() || info.isFile()) && IsRemoteName(info.fileName());
}

}  // namespace

CLocalStorage::CLocalStorage(const SAccount& account, LostFunction lost)
    : m_address(account.address.toLocalFile()), m_makesAddress(account.makesAddress),
      m_root(QDir(m_address).filePath(account.product)), m_mark(NewMarkName()), m_lost(std::move(lost)),
      m_copies(new QObject)
{
}

QString CLocalStorage::PathOf(const QString& id) const
{
    return id.isEmpty() ? m_root : m_root + QLatin1Char('/') + id;
}

QString CLocalStorage::MarkPath() const
{
    return PathOf(m_mark);
}

// There, and nothing on the way to it is a link.
bool CLocalStorage::IsReal(const QString& id) const
{
    QString path = m_root;
    for (const QString& name : NamesOf(id)) {
        path += QLatin1Char('/') + name;
        if (QFileInfo(path).isSymLink())
            return false;
    }
    return QFileInfo::exists(path);
}

bool CLocalStorage::IsFolder(const QString& id) const
{
    return IsReal(id) && QFileInfo(PathOf(id)).isDir();
}

bool CLocalStorage::HasMark(CAnswerBase& answer)
{
    if (QFileInfo(MarkPath()).isDir())
        return true;
    m_lost(*this);
    answer.Refuse({code::NotLoggedIn, QNetworkReply::AuthenticationRequiredError});
    return false;
}

bool CLocalStorage::HasFolder(const QString& id, CAnswerBase& answer)
{
    if (!HasMark(answer))
        return false;
    if (!IsFolder(id))
        answer.Refuse({code::FolderMissing, QNetworkReply::ContentNotFoundError});
    return IsFolder(id);
}

void CLocalStorage::TakeMarksAway() const
{
    const QStringList names = QDir(m_root).entryList(Everything);
    for (const QString& name : names) {
        if (IsMarkName(name) && name != m_mark)
            removeEntry(PathOf(name));
    }
}

void CLocalStorage::Open(const AnswerPtr<NUVSLoginInfo>& answer, const std::function<void()>& opened)
{
    if (!m_makesAddress && !QFileInfo(m_address).isDir())
        return answer->Refuse({code::FolderMissing, {}});
    if (!QDir().mkpath(MarkPath()))
        return answer->Refuse({code::ServerError, {}});
    TakeMarksAway();
    opened();
}

void CLocalStorage::Verify(const AnswerPtr<NUVSLoginInfo>& /*answer*/, const std::function<void(bool isThere)>& handler)
{
    handler(QFileInfo(MarkPath()).isDir());
}

void CLocalStorage::Close(const AnswerPtr<NUVSLogoutInfo>& answer)
{
    removeEntry(MarkPath());
    if (answer)
        answer->Finish({});
}

void CLocalStorage::Children(const QString& id, const AnswerPtr<NUVSCloudChildren>& answer)
{
    if (!HasFolder(id, *answer))
        return;
    NUVSCloudChildren children;
    const QFileInfoList entries = QDir(PathOf(id)).entryInfoList(Everything, QDir::Name);
    for (const QFileInfo& entry : entries) {
        if (isShown(entry))
            children.items.append(itemOf(entry, id));
    }
    answer->Finish(children);
}

void CLocalStorage::CreateFolder(const QString& name, const QString& parent,
                                 const AnswerPtr<NUVSCloudCreateFolder>& answer)
{
    if (!HasFolder(parent, *answer))
        return;
    NUVSCloudCreateFolder made;
    made.id = ChildId(parent, name);
    made.name = name;
    if (!QDir().mkdir(PathOf(made.id)))
        made.code = IsReal(made.id) ? code::AlreadyExists : code::ServerError;
    answer->Finish(made);
}

void CLocalStorage::Upload(const QString& folder, const QString& localPath,
                           const AnswerPtr<NUVSCloudUploadFile>& answer)
{
    const QString from = kiv::system::NativePath(localPath);
    const QString name = QFileInfo(from).fileName();
    if (!HasMark(*answer))
        return;
    if (!IsFolder(folder) || !IsRemoteName(name))
        return answer->Fail(QNetworkReply::ContentNotFoundError);
    const QString staging = MarkPath() + QLatin1Char('/') + NewStagingName();
    auto* copy = new CFileCopy(from, std::make_unique<QFile>(staging), CFileCopy::EDirection::Up, answer);
    copy->setParent(m_copies.data());
    copy->Start([=, self = shared_from_this()](bool isWhole, QNetworkReply::NetworkError error) {
        copy->Target().close();
        if (isWhole)
            return Staged(staging, ChildId(folder, name), copy->Size(), answer);
        QFile::remove(staging);
        if (HasMark(*answer))
            answer->Fail(error);
    });
}

void CLocalStorage::Staged(const QString& staging, const QString& id, qint64 size,
                           const AnswerPtr<NUVSCloudUploadFile>& answer)
{
    if (!HasMark(*answer))
        return;
    NUVSCloudUploadFile sent;
    sent.id = id;
    sent.name = NamesOf(id).last();
    sent.size = size;
    const bool isTaken = IsFolder(id);
    if (!isTaken && renameFile(staging, PathOf(id)))
        return answer->Finish(sent);
    QFile::remove(staging);
    answer->Fail(isTaken ? QNetworkReply::ContentConflictError : QNetworkReply::ContentAccessDenied);
}

void CLocalStorage::Download(const QString& id, const QString& localPath, const AnswerPtr<NUVSBaseInfo>& answer)
{
    if (!HasMark(*answer))
        return;
    const QString to = kiv::system::NativePath(localPath);
    if (!IsReal(id))
        return answer->Fail(QNetworkReply::ContentNotFoundError);
    if (!MakeRoomFor(to))
        return answer->Fail(QNetworkReply::ContentAccessDenied);
    auto saved = std::make_unique<QSaveFile>(to);
    QSaveFile* target = saved.get();
    auto* copy = new CFileCopy(PathOf(id), std::move(saved), CFileCopy::EDirection::Down, answer);
    copy->setParent(m_copies.data());
    copy->Start([=, self = shared_from_this()](bool isWhole, QNetworkReply::NetworkError error) {
        if (isWhole && target->flush() && target->commit())
            return answer->Finish({});
        Discard(*target);
        answer->Fail(error);
    });
}

void CLocalStorage::Delete(const QString& id, const AnswerPtr<NUVSCloudDelFile>& answer)
{
    if (!HasMark(*answer))
        return;
    NUVSCloudDelFile deleted;
    deleted.id = id;
    if (!IsReal(id))
        deleted.code = code::FileMissing;
    else if (!removeEntry(PathOf(id)))
        deleted.code = code::ServerError;
    answer->Finish(deleted);
}

void CLocalStorage::Abort()
{
    const QObjectList copies = m_copies->children();
    qDeleteAll(copies);
}

}  // namespace nuvs
