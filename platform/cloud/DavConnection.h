#pragma once

#include "DavRequest.h"
#include "HttpAuthorisation.h"
#include "Storage.h"

#include <QNetworkAccessManager>
#include <QScopedPointer>

namespace nuvs {

/// The way to one account's server. What it knows (credentials, open connections) goes with it.
class CDavConnection {
public:
    explicit CDavConnection(const SAccount& account);
    ~CDavConnection();

    /// The answer hears of progress and gets the reply; it may be null.
    void Send(const SDavOrder& order, const AnswerBasePtr& answer, const DavHandler& handler);
    /// Ends what is under way as cancelled; what is sent later ends so at once.
    void Abort();

    CHttpAuthorisation& Authorisation() { return m_authorisation; }
    const QByteArray& AgentName() const { return m_agentName; }
    QNetworkAccessManager& Manager() { return *m_manager; }

private:
    CHttpAuthorisation m_authorisation;
    QByteArray m_agentName;
    QScopedPointer<QNetworkAccessManager, QScopedPointerDeleteLater> m_manager;
    QScopedPointer<QObject, QScopedPointerDeleteLater> m_requests;  ///< their parent; the last one may be on the stack
    bool m_isAborted = false;
};

}  // namespace nuvs
