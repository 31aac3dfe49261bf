#include "DavUpload.h"

#include "DavPath.h"
#include "RemoteName.h"

#include <kiv/system/StoredPath.h>

#include <QFileInfo>

#include <algorithm>

namespace nuvs {

namespace {

// A server that refuses may read the whole body before it says so (Apache does): that is worth a question before.
constexpr qint64 Large = 1 << 20;

// How Apache answers to the address of a folder without "/" at its end.
bool isRedirection(const SDavAnswer& got)
{
    return got.IsAnswered() && got.status >= 300 && got.status < 400;
}

bool isRefusedMove(const SDavAnswer& got)
{
    return got.IsAnswered() && (got.status == 405 || got.status == 501);
}

}  // namespace

CDavUpload::CDavUpload(DavSessionPtr session, const QString& folder, const QString& path,
                       AnswerPtr<NUVSCloudUploadFile> answer)
    : m_session(std::move(session)), m_folder(folder), m_path(path), m_id(ChildId(folder, QFileInfo(path).fileName())),
      m_staging(m_session->StagingUrl(NewStagingName())), m_size(kiv::system::FileSize(path)),
      m_modified(QFileInfo(path).lastModified()), m_answer(std::move(answer))
{
}

void CDavUpload::Start()
{
    if (!IsRemoteName(QFileInfo(m_path).fileName()) || m_size < 0)
        return m_answer->Fail(QNetworkReply::ContentNotFoundError);
    if (!QFileInfo(m_path).isReadable())
        return m_answer->Fail(QNetworkReply::ContentAccessDenied);
    if (!m_session->CanMove())
        return m_session->LookForMark(m_answer, [self = shared_from_this()] { self->PutDirectly(); });
    if (m_size > Large && m_session->Connection().Authorisation().MayBeStale())
        return m_session->LookForMark(m_answer, [self = shared_from_this()] { self->Put(); });
    Put();
}

bool CDavUpload::IsUnchanged() const
{
    return kiv::system::FileSize(m_path) == m_size && QFileInfo(m_path).lastModified() == m_modified;
}

void CDavUpload::Send(const QUrl& url, void (CDavUpload::*done)(const SDavAnswer&))
{
    SDavOrder order;
    order.verb = "PUT";
    order.url = url;
    order.headers = {{"Content-Type", "application/octet-stream"}};
    order.file = m_path;
    order.fileSize = m_size;
    m_session->Connection().Send(
        order, m_answer, [self = shared_from_this(), done](const SDavAnswer& got) { (self.get()->*done)(got); });
}

void CDavUpload::Put()
{
    Send(m_staging, &CDavUpload::PutDone);
}

void CDavUpload::PutDone(const SDavAnswer& got)
{
    if (!got.IsSuccess())
        return GiveUp(got, m_staging);
    if (!IsUnchanged())
        return FailAfterCleaning(m_staging, QNetworkReply::UnknownContentError);
    Move(m_session->IsKnownFile(m_id));
}

void CDavUpload::Move(bool replaces)
{
    SDavOrder order;
    order.verb = "MOVE";
    order.url = m_staging;
    order.headers = {{"Destination", m_session->FileUrlOf(m_id).toEncoded()}, {"Overwrite", replaces ? "T" : "F"}};
    m_session->Connection().Send(order, m_answer, [self = shared_from_this(), replaces](const SDavAnswer& got) {
        self->MoveDone(got, replaces);
    });
}

void CDavUpload::MoveDone(const SDavAnswer& got, bool replaces)
{
    // 207 tells what could not be moved.
    if (got.IsSuccess() && got.status != 207)
        return Finish();
    if (!replaces && (got.status == 412 || isRedirection(got)))
        return MoveOverFile();
    if (!isRefusedMove(got))
        return GiveUp(got, m_staging);
    m_session->LearnNoMove();
    Clean(m_staging, [self = shared_from_this()] { self->PutDirectly(); });
}

// Something of that name is there. Moving over a folder would delete it with all that is in it; the folder is listed
// whole, so that this is asked once, not for each file that is replaced.
void CDavUpload::MoveOverFile()
{
    const auto look = [self = shared_from_this()](const SDavAnswer& got, const QVector<SDavEntry>& entries) {
        if (!got.IsSuccess())
            return self->GiveUp(got, self->m_staging);
        self->m_session->Learn(self->m_folder, entries);
        if (self->m_session->IsKnownFile(self->m_id))
            return self->Move(true);
        self->FailForFolder(self->m_staging);
    };
    m_session->Look(m_session->FolderUrlOf(m_folder), 1, m_answer, look);
}

void CDavUpload::PutDirectly()
{
    Send(m_session->FileUrlOf(m_id), &CDavUpload::PutDirectlyDone);
}

void CDavUpload::PutDirectlyDone(const SDavAnswer& got)
{
    if (got.IsSuccess() && IsUnchanged())
        return Finish();
    if (got.IsSuccess())
        return FailAfterCleaning(m_session->FileUrlOf(m_id), QNetworkReply::UnknownContentError);
    // After silence the caller may have tried again, and succeeded, when the file would be deleted.
    if (got.outcome == SDavAnswer::EOutcome::Silent)
        return GiveUp(got, {});
    if (!got.IsAnswered())
        return GiveUp(got, m_session->FileUrlOf(m_id));
    // What was refused has changed nothing; a folder of that name is a reason.
    const auto look = [self = shared_from_this(), got](const SDavAnswer& looked, const QVector<SDavEntry>& entries) {
        if (looked.IsSuccess() && entries.size() == 1 && entries[0].isFolder)
            return self->FailForFolder({});
        self->GiveUp(got, {});
    };
    m_session->Look(m_session->FolderUrlOf(m_id), 0, m_answer, look);
}

/// Tidies up, and tells a lost session from a refusal: a server that refuses a large body may close the connection
/// before its answer is read. Nobody waits twice for one that is silent, and as the process ends nothing is asked any
/// more.
void CDavUpload::GiveUp(const SDavAnswer& got, const QUrl& left)
{
    const bool isSilent = got.outcome == SDavAnswer::EOutcome::Silent;
    if (isSilent || got.error == QNetworkReply::OperationCanceledError) {
        m_session->Refuse(got, *m_answer, code::FolderMissing);
        return Clean(left, [] {});
    }
    Clean(left, [self = shared_from_this(), got] {
        const auto refuse = [self, got] { self->m_session->Refuse(got, *self->m_answer, code::FolderMissing); };
        if (got.status == 401)
            return refuse();
        // Asked without the answer: what ends it is the first failure, not this question's.
        const auto look = [self, refuse](const SDavAnswer& looked, const QVector<SDavEntry>&) {
            if (looked.status == 401 || IsMissing(looked))
                return self->m_session->Lose(*self->m_answer);
            refuse();
        };
        self->m_session->Look(self->m_session->MarkUrl(), 0, nullptr, look);
    });
}

// The name is taken.
void CDavUpload::FailForFolder(const QUrl& left)
{
    FailAfterCleaning(left, QNetworkReply::ContentConflictError);
}

void CDavUpload::FailAfterCleaning(const QUrl& left, QNetworkReply::NetworkError error)
{
    Clean(left, [self = shared_from_this(), error] { self->m_answer->Fail(error); });
}

void CDavUpload::Clean(const QUrl& left, const std::function<void()>& done)
{
    if (left.isEmpty())
        return done();
    SDavOrder order;
    order.verb = "DELETE";
    order.url = left;
    m_session->Connection().Send(order, nullptr, [self = shared_from_this(), done](const SDavAnswer&) { done(); });
}

void CDavUpload::Finish()
{
    NUVSCloudUploadFile sent;
    sent.id = m_id;
    sent.name = NamesOf(m_id).last();
    sent.size = m_size;
    m_session->LearnFile(m_id, m_size);
    m_answer->Finish(sent);
}

}  // namespace nuvs
