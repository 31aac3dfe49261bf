#include "UploadReply.h"

#include <QSslConfiguration>

#include <algorithm>

namespace nuvs {

namespace {

constexpr qint64 BlockSize = 256 << 10;
constexpr qint64 MostUnsent = 2 * BlockSize;
constexpr int LargestHead = 64 << 10;
constexpr qint64 TellEveryMs = 100;

QNetworkReply::NetworkError errorOf(QAbstractSocket::SocketError error)
{
    switch (error) {
    case QAbstractSocket::ConnectionRefusedError:
        return QNetworkReply::ConnectionRefusedError;
    case QAbstractSocket::RemoteHostClosedError:
        return QNetworkReply::RemoteHostClosedError;
    case QAbstractSocket::HostNotFoundError:
        return QNetworkReply::HostNotFoundError;
    case QAbstractSocket::SslHandshakeFailedError:
        return QNetworkReply::SslHandshakeFailedError;
    case QAbstractSocket::ProxyAuthenticationRequiredError:
        return QNetworkReply::ProxyAuthenticationRequiredError;
    default:
        return QNetworkReply::UnknownNetworkError;
    }
}

QNetworkReply::NetworkError errorOfStatus(int status)
{
    switch (status) {
    case 401:
        return QNetworkReply::AuthenticationRequiredError;
    case 403:
        return QNetworkReply::ContentAccessDenied;
    case 404:
        return QNetworkReply::ContentNotFoundError;
    case 405:
        return QNetworkReply::ContentOperationNotPermittedError;
    case 409:
        return QNetworkReply::ContentConflictError;
    case 500:
        return QNetworkReply::InternalServerError;
    case 503:
        return QNetworkReply::ServiceUnavailableError;
    default:
        break;
    }
    if (status >= 500)
        return QNetworkReply::UnknownServerError;
    return status >= 400 ? QNetworkReply::UnknownContentError : QNetworkReply::NoError;
}

QByteArray hostLine(const QUrl& url)
{
    const QString host = url.host(QUrl::FullyEncoded);
    const QByteArray name =
        (host.contains(QLatin1Char(':')) ? QLatin1Char('[') + host + QLatin1Char(']') : host).toLatin1();
    return url.port() < 0 ? name : name + ':' + QByteArray::number(url.port());
}

// "HTTP/1.1 201 Created"; 0 when it is no such line.
int statusOf(const QByteArray& line)
{
    const QList<QByteArray> words = line.split(' ');
    return words.size() > 1 && words[0].startsWith("HTTP/1.") && words[1].size() == 3 ? words[1].toInt() : 0;
}

}  // namespace

CUploadReply::CUploadReply(const QNetworkRequest& request, const QByteArray& verb, const QString& path, qint64 size)
    : m_file(path), m_verb(verb), m_size(size), m_left(size)
{
    setRequest(request);
    setUrl(request.url());
    setOperation(QNetworkAccessManager::PutOperation);
    open(QIODevice::ReadOnly);
    m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    // Not at once: a proxy's setting can refuse on the spot, when nobody listens yet.
    QMetaObject::invokeMethod(this, &CUploadReply::Connect, Qt::QueuedConnection);
}

void CUploadReply::Connect()
{
    if (isFinished())
        return;
    const bool isSecure = url().scheme() == QLatin1String("https");
    if (isSecure)
        connect(&m_socket, &QSslSocket::encrypted, this, &CUploadReply::SendHead);
    else
        connect(&m_socket, &QSslSocket::connected, this, &CUploadReply::SendHead);
    connect(&m_socket, &QSslSocket::readyRead, this, &CUploadReply::OnReadyRead);
    connect(&m_socket, &QSslSocket::errorOccurred, this, &CUploadReply::OnSocketError);
    m_socket.setReadBufferSize(LargestHead);
    m_socket.setSslConfiguration(request().sslConfiguration());
    if (isSecure)
        m_socket.connectToHostEncrypted(url().host(), quint16(url().port(443)));
    else
        m_socket.connectToHost(url().host(), quint16(url().port(80)));
}

void CUploadReply::SendHead()
{
    m_socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
    QByteArray head = m_verb + ' ' +
                      url().toEncoded(QUrl::RemoveScheme | QUrl::RemoveAuthority | QUrl::RemoveFragment |
                                      QUrl::NormalizePathSegments) +
                      " HTTP/1.1\r\nHost: " + hostLine(url()) +
                      "\r\nConnection: close\r\nContent-Length: " + QByteArray::number(m_size) + "\r\n";
    for (const QByteArray& name : request().rawHeaderList())
        head += name + ": " + request().rawHeader(name) + "\r\n";
    m_socket.write(head + "\r\n");
    m_told.start();
    // Not before: the handshake is written, too.
    connect(&m_socket, &QSslSocket::bytesWritten, this, &CUploadReply::OnWritten);
    connect(&m_socket, &QSslSocket::encryptedBytesWritten, this, &CUploadReply::OnWritten);
    Fill();
}

qint64 CUploadReply::Unsent() const
{
    return m_left + m_socket.bytesToWrite() + m_socket.encryptedBytesToWrite();
}

void CUploadReply::Fill()
{
    // Neither what is appended to the file meanwhile, nor less.
    while (m_left > 0 && Unsent() - m_left < MostUnsent) {
        const QByteArray block = m_file.read(qMin(BlockSize, m_left));
        if (block.isEmpty())
            return Finish(UnknownContentError, QStringLiteral("The file became shorter."));
        m_left -= block.size();
        m_socket.write(block);
    }
}

void CUploadReply::OnWritten()
{
    if (isFinished())
        return;
    Fill();
    // The file may have failed.
    if (isFinished())
        return;
    const qint64 unsent = Unsent();
    const qint64 sent = qMax<qint64>(0, m_size - unsent);
    if (unsent > 0 && !m_told.hasExpired(TellEveryMs))
        return;
    m_told.start();
    emit uploadProgress(sent, m_size);
}

void CUploadReply::OnReadyRead()
{
    while (!isFinished() && m_socket.canReadLine()) {
        const QByteArray line = m_socket.readLine(LargestHead);
        m_head += line;
        if (line.trimmed().isEmpty() && TakeHead())
            return;
    }
    if (!isFinished() && m_head.size() + m_socket.bytesAvailable() >= LargestHead)
        Finish(ProtocolFailure, QStringLiteral("The answer's head is too large."));
}

// False when it is only a word of the server's in between (100 Continue).
bool CUploadReply::TakeHead()
{
    const QList<QByteArray> lines = std::exchange(m_head, {}).split('\n');
    const int status = statusOf(lines.first().trimmed());
    if (status >= 100 && status < 200)
        return false;
    const bool isEarlySuccess = status < 300 && Unsent() > 0;
    if (status == 0 || isEarlySuccess) {
        Finish(ProtocolFailure, QStringLiteral("The server's answer makes no sense."));
        return true;
    }
    for (const QByteArray& line : lines.mid(1)) {
        const int colon = line.indexOf(':');
        const QByteArray name = line.left(colon).trimmed();
        const QByteArray before = hasRawHeader(name) ? rawHeader(name) + ", " : QByteArray();
        if (colon > 0)
            setRawHeader(name, before + line.mid(colon + 1).trimmed());
    }
    setAttribute(QNetworkRequest::HttpStatusCodeAttribute, status);
    emit metaDataChanged();
    Finish(errorOfStatus(status), QStringLiteral("The server refused."));
    return true;
}

void CUploadReply::OnSocketError(QAbstractSocket::SocketError error)
{
    // A server that refuses closes without having read everything.
    OnReadyRead();
    if (!isFinished())
        Finish(errorOf(error), m_socket.errorString());
}

void CUploadReply::abort()
{
    if (!isFinished())
        Finish(OperationCanceledError, QStringLiteral("Operation cancelled."));
}

void CUploadReply::Finish(NetworkError error, const QString& text)
{
    m_left = 0;
    setFinished(true);
    m_socket.abort();
    if (error != NoError) {
        setError(error, text);
        emit errorOccurred(error);
    }
    emit finished();
}

}  // namespace nuvs
