#include "DavLogin.h"

#include "DavPath.h"

namespace nuvs {

CDavLogin::CDavLogin(DavSessionPtr session, AnswerPtr<NUVSLoginInfo> answer, std::function<void()> opened)
    : m_session(std::move(session)), m_answer(std::move(answer)), m_opened(std::move(opened))
{
}

void CDavLogin::Start()
{
    const auto look = [self = shared_from_this()](const SDavAnswer& got, const QVector<SDavEntry>&) {
        if (!got.IsSuccess())
            return self->Refuse(got);
        self->MakeMark(false);
    };
    m_session->Look(FolderUrl(m_session->Address(), {}), 0, m_answer, look);
}

// Most logins find the root, so the mark is tried first.
void CDavLogin::MakeMark(bool isRootMade)
{
    MakeFolder(m_session->MarkUrl(), [self = shared_from_this(), isRootMade](const SDavAnswer& got) {
        if (IsMissing(got) && !isRootMade)
            return self->MakeRoot();
        if (!got.IsSuccess())
            return self->Refuse(got);
        const auto list = [self](const SDavListing& listing) { self->TakeMarksAway(listing.marks); };
        self->m_session->List({}, self->m_answer, list);
    });
}

void CDavLogin::MakeRoot()
{
    MakeFolder(m_session->FolderUrlOf({}), [self = shared_from_this()](const SDavAnswer& got) {
        // Another login may have made it in between.
        if (!got.IsSuccess() && got.status != 405)
            return self->Refuse(got);
        self->MakeMark(true);
    });
}

void CDavLogin::MakeFolder(const QUrl& url, const DavHandler& handler)
{
    SDavOrder order;
    order.verb = "MKCOL";
    order.url = url;
    m_session->Connection().Send(order, m_answer, handler);
}

// One that cannot be taken away does not keep this session from being the last.
void CDavLogin::TakeMarksAway(QStringList marks)
{
    marks.removeAll(m_session->Mark());
    if (marks.isEmpty())
        return m_opened();
    SDavOrder order;
    order.verb = "DELETE";
    order.url = m_session->FolderUrlOf(marks.takeFirst());
    m_session->Connection().Send(order, m_answer, [self = shared_from_this(), marks](const SDavAnswer& got) {
        if (!got.IsAnswered())
            return self->Refuse(got);
        self->TakeMarksAway(marks);
    });
}

void CDavLogin::Refuse(const SDavAnswer& got)
{
    if (got.IsAnswered() && (got.status == 401 || got.status == 403))
        return m_answer->Refuse({code::LoginRefused, {}});
    m_session->Refuse(got, *m_answer, code::FolderMissing);
}

}  // namespace nuvs
