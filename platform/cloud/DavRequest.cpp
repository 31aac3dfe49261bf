#include "DavRequest.h"

#include "DavConnection.h"
#include "Settings.h"
#include "UploadReply.h"

namespace nuvs {

namespace {

constexpr qint64 ReadBuffer = 1 << 20;
// The first challenge, and one because it became stale.
constexpr int MostResent = 2;

int statusOf(const QNetworkReply& reply)
{
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

// Errors below this are of the connection and of proxies, not of the server; ProtocolFailure is an answer that is none.
bool isOfConnection(QNetworkReply::NetworkError error)
{
    constexpr int firstOfContent = QNetworkReply::ContentAccessDenied;
    return (error != QNetworkReply::NoError && int(error) < firstOfContent) ||
           error == QNetworkReply::ProtocolFailure || error == QNetworkReply::ProtocolUnknownError;
}

}  // namespace

CDavRequest::CDavRequest(CDavConnection& connection, SDavOrder order, AnswerBasePtr answer, DavHandler handler)
    : m_connection(connection), m_order(std::move(order)), m_answer(std::move(answer)), m_handler(std::move(handler))
{
    m_silence.setSingleShot(true);
    m_silence.setInterval(CloudSettings().silenceMs);
    connect(&m_silence, &QTimer::timeout, this, &CDavRequest::OnSilence);
}

QNetworkRequest CDavRequest::Prepare()
{
    QNetworkRequest request(m_order.url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setRawHeader("User-Agent", m_connection.AgentName());
    // Lengths are compared with what was promised.
    request.setRawHeader("Accept-Encoding", "identity");
    for (const auto& header : m_order.headers)
        request.setRawHeader(header.first, header.second);
    const QByteArray authorisation = m_connection.Authorisation().Header(m_order.verb, m_order.url);
    m_wasAuthorised = !authorisation.isEmpty();
    if (m_wasAuthorised)
        request.setRawHeader("Authorization", authorisation);
    return request;
}

QNetworkReply* CDavRequest::Start(const QNetworkRequest& request)
{
    QNetworkAccessManager& manager = m_connection.Manager();
    if (m_order.takeData)
        return manager.get(request);
    if (!m_order.file.isEmpty())
        return new CUploadReply(request, m_order.verb, m_order.file, m_order.fileSize);
    return m_order.body.isEmpty() ? manager.sendCustomRequest(request, m_order.verb)
                                  : manager.sendCustomRequest(request, m_order.verb, m_order.body);
}

void CDavRequest::Send()
{
    m_reply = Start(Prepare());
    m_reply->setReadBufferSize(ReadBuffer);
    if (m_answer)
        m_answer->SetReply(m_reply);
    Watch();
    m_silence.start();
}

void CDavRequest::Watch()
{
    const auto heard = [this] { m_silence.start(); };
    connect(m_reply, &QNetworkReply::metaDataChanged, this, heard);
    connect(m_reply, &QNetworkReply::encrypted, this, heard);
    connect(m_reply, &QNetworkReply::uploadProgress, this,
            [this](qint64 done, qint64 total) { OnProgress(true, done, total); });
    connect(m_reply, &QNetworkReply::readyRead, this, &CDavRequest::OnReadyRead);
    // Queued: a callback that gives up its reply while it hears of progress is still at it then.
    connect(m_reply, &QNetworkReply::finished, this, &CDavRequest::OnFinished, Qt::QueuedConnection);
}

void CDavRequest::OnProgress(bool isUp, qint64 done, qint64 total)
{
    m_silence.start();
    if (isUp && m_answer && !m_order.file.isEmpty() && total > 0)
        m_answer->Sent(done, total);
}

void CDavRequest::OnReadyRead()
{
    m_silence.start();
    if (m_isGivenUp || TakeBody())
        return;
    m_isGivenUp = true;
    m_reply->abort();
}

// False when no more is wanted.
bool CDavRequest::TakeBody()
{
    const int status = statusOf(*m_reply);
    if (m_order.takeData && (status == 200 || status == 206))
        return m_order.takeData(*m_reply);
    if (m_answer)
        m_answer->ReadyRead();
    m_body += m_reply->readAll();
    m_isTooLarge = m_body.size() > m_order.largestAnswer;
    return !m_isTooLarge;
}

bool CDavRequest::Resend(int status)
{
    if (status != 401 || m_resent >= MostResent ||
        !m_connection.Authorisation().TakeChallenge(m_reply->rawHeader("WWW-Authenticate"), m_wasAuthorised))
        return false;
    ++m_resent;
    m_body.clear();
    GiveUpReply();
    Send();
    return true;
}

void CDavRequest::OnFinished()
{
    using EOutcome = SDavAnswer::EOutcome;
    if (!m_reply)
        return End(EOutcome::Broken, 0, QNetworkReply::OperationCanceledError);
    const int status = m_isTooLarge ? SDavAnswer::Unreadable : statusOf(*m_reply);
    const QNetworkReply::NetworkError error = m_reply->error();
    if (m_isGivenUp)
        return End(EOutcome::Answered, status, QNetworkReply::UnknownContentError);
    if (isOfConnection(error) || status == 0) {
        // What arrived before the connection broke need not be asked for again.
        if (error != QNetworkReply::OperationCanceledError && m_reply->bytesAvailable() > 0)
            TakeBody();
        return End(EOutcome::Broken, status, error == QNetworkReply::NoError ? QNetworkReply::ProtocolFailure : error);
    }
    // Also without data: whoever takes the body wants to see the head.
    if (!TakeBody())
        return End(EOutcome::Answered, m_isTooLarge ? SDavAnswer::Unreadable : status, error);
    if (!Resend(status))
        End(EOutcome::Answered, status, error);
}

void CDavRequest::OnSilence()
{
    End(SDavAnswer::EOutcome::Silent, 0, QNetworkReply::TimeoutError);
}

void CDavRequest::Cancel()
{
    End(SDavAnswer::EOutcome::Broken, 0, QNetworkReply::OperationCanceledError);
}

void CDavRequest::GiveUpReply()
{
    if (m_answer)
        m_answer->SetReply(nullptr);
    if (!m_reply)
        return;
    m_reply->disconnect(this);
    m_reply->abort();
    m_reply->deleteLater();
    m_reply = nullptr;
}

void CDavRequest::End(SDavAnswer::EOutcome outcome, int status, QNetworkReply::NetworkError error)
{
    m_silence.stop();
    GiveUpReply();
    deleteLater();
    m_answer.reset();
    if (const DavHandler handler = std::exchange(m_handler, nullptr))
        handler({outcome, status, error, m_body});
}

}  // namespace nuvs
