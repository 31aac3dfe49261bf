#include "WebDavStorage.h"

#include "DavDownload.h"
#include "DavLogin.h"
#include "DavUpload.h"
#include "RemoteName.h"

#include <kiv/system/StoredPath.h>

#include <algorithm>

namespace nuvs {

namespace {

/// The root's listing shows the mark; of another folder it is looked for first.
void listMarked(const DavSessionPtr& session, const QString& folder, const AnswerBasePtr& answer,
                const CDavSession::ListHandler& handler)
{
    if (folder.isEmpty())
        return session->List(folder, answer, handler);
    session->LookForMark(answer, [=] { session->List(folder, answer, handler); });
}

void makeFolder(const DavSessionPtr& session, NUVSCloudCreateFolder made,
                const AnswerPtr<NUVSCloudCreateFolder>& answer)
{
    SDavOrder order;
    order.verb = "MKCOL";
    order.url = session->FolderUrlOf(made.id);
    session->Connection().Send(order, answer, [session, made, answer](const SDavAnswer& got) mutable {
        // Somebody else made it after the listing.
        if (got.IsAnswered() && got.status == 405)
            made.code = code::AlreadyExists;
        else if (got.status != 201)
            return session->Refuse(got, *answer, code::FolderMissing);
        answer->Finish(made);
    });
}

// Some servers know a folder only by its address with "/" at the end, and redirect there.
void deleteEntry(const DavSessionPtr& session, const QString& id, bool isFolder,
                 const AnswerPtr<NUVSCloudDelFile>& answer)
{
    SDavOrder order;
    order.verb = "DELETE";
    order.url = isFolder ? session->FolderUrlOf(id) : session->FileUrlOf(id);
    session->Connection().Send(order, answer, [=](const SDavAnswer& got) {
        if (got.status == 301 && !isFolder)
            return deleteEntry(session, id, true, answer);
        // 409 is a conflict with what is there. 207 tells what could not be deleted.
        const bool isConflict = got.status == 409;
        if (!got.IsSuccess() || got.status == 207)
            return session->Refuse(got, *answer, isConflict ? code::ServerError : code::FileMissing);
        session->ForgetFile(id);
        NUVSCloudDelFile deleted;
        deleted.id = id;
        answer->Finish(deleted);
    });
}

}  // namespace

CWebDavStorage::CWebDavStorage(const SAccount& account, const LostFunction& lost) : m_session(account, *this, lost)
{
}

void CWebDavStorage::Open(const AnswerPtr<NUVSLoginInfo>& answer, const std::function<void()>& opened)
{
    std::make_shared<CDavLogin>(Session(), answer, opened)->Start();
}

void CWebDavStorage::Verify(const AnswerPtr<NUVSLoginInfo>& answer, const std::function<void(bool isThere)>& handler)
{
    const auto look = [session = Session(), answer, handler](const SDavAnswer& got, const QVector<SDavEntry>&) {
        if (!got.IsAnswered())
            return session->Refuse(got, *answer, code::ServerError);
        handler(got.IsSuccess());
    };
    m_session.Look(m_session.MarkUrl(), 0, answer, look);
}

void CWebDavStorage::Close(const AnswerPtr<NUVSLogoutInfo>& answer)
{
    SDavOrder order;
    order.verb = "DELETE";
    order.url = m_session.MarkUrl();
    m_session.Connection().Send(order, answer, [session = Session(), answer](const SDavAnswer& got) {
        if (!answer)
            return;
        if (!got.IsAnswered())
            return session->Refuse(got, *answer, code::ServerError);
        answer->Finish({});
    });
}

void CWebDavStorage::Children(const QString& id, const AnswerPtr<NUVSCloudChildren>& answer)
{
    const auto list = [answer](const SDavListing& listing) {
        NUVSCloudChildren children;
        children.items = listing.items;
        answer->Finish(children);
    };
    listMarked(Session(), id, answer, list);
}

// Servers disagree about what making a folder that exists answers, so it is looked for first.
void CWebDavStorage::CreateFolder(const QString& name, const QString& parent,
                                  const AnswerPtr<NUVSCloudCreateFolder>& answer)
{
    NUVSCloudCreateFolder made;
    made.id = ChildId(parent, name);
    made.name = name;
    const auto list = [=, session = Session()](const SDavListing& listing) mutable {
        const auto isIt = [&](const NUVSCloudFileItem& item) { return item.name == name; };
        if (std::none_of(listing.items.cbegin(), listing.items.cend(), isIt))
            return makeFolder(session, made, answer);
        made.code = code::AlreadyExists;
        answer->Finish(made);
    };
    listMarked(Session(), parent, answer, list);
}

void CWebDavStorage::Upload(const QString& folder, const QString& localPath,
                            const AnswerPtr<NUVSCloudUploadFile>& answer)
{
    std::make_shared<CDavUpload>(Session(), folder, kiv::system::NativePath(localPath), answer)->Start();
}

void CWebDavStorage::Download(const QString& id, const QString& localPath, const AnswerPtr<NUVSBaseInfo>& answer)
{
    std::make_shared<CDavDownload>(Session(), id, kiv::system::NativePath(localPath), answer)->Start();
}

void CWebDavStorage::Delete(const QString& id, const AnswerPtr<NUVSCloudDelFile>& answer)
{
    m_session.LookForMark(answer, [session = Session(), id, answer] { deleteEntry(session, id, false, answer); });
}

}  // namespace nuvs
