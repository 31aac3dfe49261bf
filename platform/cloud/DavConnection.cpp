#include "DavConnection.h"

#include <QPointer>
#include <QRegularExpression>

namespace nuvs {

namespace {

QByteArray agentName(const QString& version)
{
    static const QRegularExpression plain(QStringLiteral("^[0-9A-Za-z.]{1,32}$"));
    return plain.match(version).hasMatch() ? "KIV-cloud/" + version.toLatin1() : QByteArray("KIV-cloud");
}

}  // namespace

CDavConnection::CDavConnection(const SAccount& account)
    : m_authorisation(account.user, account.password), m_agentName(agentName(account.version)),
      m_manager(new QNetworkAccessManager), m_requests(new QObject)
{
}

CDavConnection::~CDavConnection() = default;

void CDavConnection::Send(const SDavOrder& order, const AnswerBasePtr& answer, const DavHandler& handler)
{
    if (m_isAborted)
        return handler({SDavAnswer::EOutcome::Broken, 0, QNetworkReply::OperationCanceledError, {}});
    auto* request = new CDavRequest(*this, order, answer, handler);
    request->setParent(m_requests.data());
    request->Send();
}

void CDavConnection::Abort()
{
    m_isAborted = true;
    // One that ends may end, and delete, others.
    QList<QPointer<CDavRequest>> requests;
    for (QObject* request : m_requests->children())
        requests.append(static_cast<CDavRequest*>(request));
    for (const QPointer<CDavRequest>& request : requests) {
        if (request)
            request->Cancel();
    }
}

}  // namespace nuvs
