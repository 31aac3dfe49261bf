#include "DavSession.h"

#include "DavPath.h"
#include "RemoteName.h"

#include <algorithm>

namespace nuvs {

namespace {

constexpr qint64 LargestListing = 32 << 20;
constexpr int Multistatus = 207;

const QByteArray Question = R"(<?xml version="1.0" encoding="utf-8"?>
<propfind xmlns="DAV:"><prop><resourcetype/><getcontentlength/><getlastmodified/></prop></propfind>)";

QString codeOf(const SDavAnswer& got, QLatin1String missing)
{
    if (IsMissing(got))
        return missing;
    return got.status >= 300 && got.status < 400 ? code::Redirected : code::ServerError;
}

const SDavEntry* findItself(const QVector<SDavEntry>& entries, const QUrl& url)
{
    QString name;
    const auto isItself = [&](const SDavEntry& entry) {
        return entry.isThere && PlaceOf(entry.reference, url, name) == EPlace::Itself;
    };
    const auto found = std::find_if(entries.cbegin(), entries.cend(), isItself);
    return found == entries.cend() ? nullptr : &*found;
}

NUVSCloudFileItem itemOf(const SDavEntry& entry, const QString& id, const QString& name)
{
    NUVSCloudFileItem item;
    item.id = id;
    item.name = name;
    item.isFolder = entry.isFolder;
    item.size = entry.isFolder ? -1 : entry.size;
    item.modified = entry.modified;
    return item;
}

// In the order of their names, each name once.
void arrange(QVector<NUVSCloudFileItem>& items)
{
    const auto isBefore = [](const auto& a, const auto& b) { return a.name < b.name; };
    const auto isSame = [](const auto& a, const auto& b) { return a.name == b.name; };
    std::stable_sort(items.begin(), items.end(), isBefore);
    items.erase(std::unique(items.begin(), items.end(), isSame), items.end());
}

}  // namespace

bool IsMissing(const SDavAnswer& got)
{
    return got.IsAnswered() && (got.status == 404 || got.status == 409 || got.status == 410);
}

CDavSession::CDavSession(const SAccount& account, IStorage& owner, LostFunction lost)
    : m_address(account.address), m_product(account.product), m_mark(NewMarkName()), m_connection(account),
      m_owner(owner), m_lost(std::move(lost))
{
}

QUrl CDavSession::FileUrlOf(const QString& id) const
{
    return FileUrl(m_address, QStringList(m_product) + NamesOf(id));
}

QUrl CDavSession::FolderUrlOf(const QString& id) const
{
    return FolderUrl(m_address, QStringList(m_product) + NamesOf(id));
}

QUrl CDavSession::StagingUrl(const QString& name) const
{
    return FileUrlOf(ChildId(m_mark, name));
}

void CDavSession::Look(const QUrl& url, int depth, const AnswerBasePtr& answer, const LookHandler& handler)
{
    SDavOrder order;
    order.verb = "PROPFIND";
    order.url = url;
    order.headers = {{"Depth", QByteArray::number(depth)}};
    // A body waits for the acknowledgement of the head (40 ms with many systems). Without one everything is told,
    // which is too much only of many.
    if (depth > 0) {
        order.headers.append(qMakePair(QByteArray("Content-Type"), QByteArray("application/xml; charset=utf-8")));
        order.body = Question;
    }
    order.largestAnswer = LargestListing;
    m_connection.Send(order, answer, [keep = m_owner.shared_from_this(), handler](SDavAnswer got) {
        QVector<SDavEntry> entries;
        const bool isRead = got.status == Multistatus && CMultistatusReader(got.body).Read(entries);
        if (got.IsSuccess() && !isRead)
            got.status = SDavAnswer::Unreadable;
        handler(got, entries);
    });
}

void CDavSession::List(const QString& folder, const AnswerBasePtr& answer, const ListHandler& handler)
{
    Look(FolderUrlOf(folder), 1, answer, [=](const SDavAnswer& got, const QVector<SDavEntry>& entries) {
        // The root goes only with the mark.
        if (folder.isEmpty() && IsMissing(got))
            return Lose(*answer);
        // Apache's words for the address of a file with "/" at its end.
        const bool isNoFolder = got.IsAnswered() && got.status == 400;
        if (!got.IsSuccess() && !isNoFolder)
            return Refuse(got, *answer, code::FolderMissing);
        const SDavEntry* itself = findItself(entries, FolderUrlOf(folder));
        if (!itself || !itself->isFolder)
            return answer->Refuse({code::FolderMissing, QNetworkReply::ContentNotFoundError});
        const SDavListing listing = Learn(folder, entries);
        if (folder.isEmpty() && !listing.marks.contains(m_mark))
            return Lose(*answer);
        handler(listing);
    });
}

SDavListing CDavSession::Learn(const QString& folder, const QVector<SDavEntry>& entries)
{
    SDavListing listing;
    const QUrl url = FolderUrlOf(folder);
    for (const SDavEntry& entry : entries) {
        QString name;
        if (!entry.isThere || PlaceOf(entry.reference, url, name) != EPlace::Child)
            continue;
        if (IsMarkName(name))
            listing.marks.append(name);
        else if (IsRemoteName(name))
            listing.items.append(itemOf(entry, ChildId(folder, name), name));
    }
    arrange(listing.items);
    for (const NUVSCloudFileItem& item : listing.items) {
        if (!item.isFolder)
            LearnFile(item.id, item.size);
        else
            ForgetFile(item.id);
    }
    return listing;
}

void CDavSession::LookForMark(const AnswerBasePtr& answer, const std::function<void()>& handler)
{
    Look(MarkUrl(), 0, answer, [=](const SDavAnswer& got, const QVector<SDavEntry>& entries) {
        if (IsMissing(got) || (got.IsSuccess() && !findItself(entries, MarkUrl())))
            return Lose(*answer);
        if (!got.IsSuccess())
            return Refuse(got, *answer, code::ServerError);
        handler();
    });
}

void CDavSession::Refuse(const SDavAnswer& got, CAnswerBase& answer, QLatin1String missing)
{
    if (got.outcome == SDavAnswer::EOutcome::Silent)
        return answer.TimeOut();
    if (got.outcome == SDavAnswer::EOutcome::Broken)
        return answer.Fail(got.error);
    if (got.status == 401)
        return Lose(answer);
    const bool hasError = got.error != QNetworkReply::NoError;
    answer.Refuse({codeOf(got, missing), hasError ? got.error : QNetworkReply::UnknownContentError});
}

void CDavSession::Lose(CAnswerBase& answer)
{
    m_lost(m_owner);
    answer.Refuse({code::NotLoggedIn, QNetworkReply::AuthenticationRequiredError});
}

}  // namespace nuvs
