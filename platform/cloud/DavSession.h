#pragma once

#include "DavConnection.h"
#include "MultistatusReader.h"

#include <QSet>

namespace nuvs {

/// What the requests of one session share: the server, the mark, what is known of the server, and how refusals are
/// told.
class CDavSession {
public:
    using ListHandler =
        std::function<void(const SDavEntry& folder, const QVector<NUVSCloudFileItem>& items, const QStringList& marks)>;
    using LookHandler = std::function<void(const SDavAnswer& answer, const QVector<SDavEntry>& entries)>;

    CDavSession(const SAccount& account, std::function<void()> lost);

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

    /// Names that are known to be files may be replaced; replacing a folder would delete what is in it.
    bool IsKnownFile(const QString& id) const { return m_files.contains(id); }
    void LearnFile(const QString& id) { m_files.insert(id); }
    void ForgetFile(const QString& id) { m_files.remove(id); }

    bool CanMove() const { return m_canMove; }
    void LearnNoMove() { m_canMove = false; }

private:
    void Sort(const QString& folder, const QVector<SDavEntry>& entries, QVector<NUVSCloudFileItem>& items,
              QStringList& marks);

    const QUrl m_address;
    const QString m_product;
    const QString m_mark;
    CDavConnection m_connection;
    const std::function<void()> m_lost;
    QSet<QString> m_files;
    bool m_canMove = true;
};

using DavSessionPtr = std::shared_ptr<CDavSession>;

}  // namespace nuvs
