#pragma once

#include "DavConnection.h"
#include "MultistatusReader.h"

#include <QHash>

namespace nuvs {

/// What is in a folder: what users put there, and session marks.
struct SDavListing {
    QVector<NUVSCloudFileItem> items;
    QStringList marks;
};

/// What servers answer where there is nothing, or no folder on the way there.
bool IsMissing(const SDavAnswer& got);

/// What the requests of one session share: the server, the mark, what is known of the server, and how refusals are
/// told.
/// Part of its storage; requests keep that alive when the service has already let go of it.
class CDavSession {
public:
    using ListHandler = std::function<void(const SDavListing& listing)>;
    using LookHandler = std::function<void(const SDavAnswer& answer, const QVector<SDavEntry>& entries)>;

    CDavSession(const SAccount& account, IStorage& owner, LostFunction lost);

    CDavConnection& Connection() { return m_connection; }
    const QUrl& Address() const { return m_address; }
    const QString& Mark() const { return m_mark; }
    QUrl FileUrlOf(const QString& id) const;
    QUrl FolderUrlOf(const QString& id) const;
    QUrl MarkUrl() const { return FolderUrlOf(m_mark); }
    QUrl StagingUrl(const QString& name) const;

    /// Asks what there is at an address (depth 0) or in it, too (depth 1). The answer's status is Unreadable when it
    /// is a success that cannot be read.
    void Look(const QUrl& url, int depth, const AnswerBasePtr& answer, const LookHandler& handler);
    /// Lists a folder; ends the answer when there is none, or when it is the root and the mark is not in it.
    void List(const QString& folder, const AnswerBasePtr& answer, const ListHandler& handler);
    /// Goes on when the mark is still there; else the session is lost and the answer ends so.
    void LookForMark(const AnswerBasePtr& answer, const std::function<void()>& handler);
    /// Ends the answer of a request that did not succeed. `missing`: the code for what is not there.
    void Refuse(const SDavAnswer& got, CAnswerBase& answer, QLatin1String missing);
    void Lose(CAnswerBase& answer);

    /// Reads a folder's listing, and remembers the files in it.
    SDavListing Learn(const QString& folder, const QVector<SDavEntry>& entries);
    void LearnFile(const QString& id, qint64 size) { m_files[id] = size; }
    void ForgetFile(const QString& id) { m_files.remove(id); }
    /// What is known to be a file may be replaced; replacing a folder would delete what is in it.
    bool IsKnownFile(const QString& id) const { return m_files.contains(id); }
    /// -1 when it is not known.
    qint64 KnownSize(const QString& id) const { return m_files.value(id, -1); }

    bool CanMove() const { return m_canMove; }
    void LearnNoMove() { m_canMove = false; }

private:
    const QUrl m_address;
    const QString m_product;
    const QString m_mark;
    CDavConnection m_connection;
    IStorage& m_owner;
    const LostFunction m_lost;
    QHash<QString, qint64> m_files;  ///< sizes
    bool m_canMove = true;
};

using DavSessionPtr = std::shared_ptr<CDavSession>;

}  // namespace nuvs
