#pragma once

#include <QNetworkReply>
#include <QObject>

/// Where the result of one request comes back. Made with `new` for one request and handed to the service, which owns it
/// from then on, calls it on the service's own thread and deletes it after the last call.
///
/// A request ends in exactly one of onFinished, onTimeOut and onError:
/// - onFinished: the server (or the service, before it asks anybody) answered; the result's code tells what.
/// - onTimeOut: nothing was heard for the time that the service was told to wait (nuvs/NUVSCloudSettings.h).
/// - onError: nothing was answered (no connection, a connection that broke, a certificate that is not trusted, the end
///   of the process), or a transfer was refused or is not whole.
/// The order of the virtual operations is an interface to hosts.
template <typename T>
class NUVSCallback : public QObject {
public:
    NUVSCallback() = default;
    ~NUVSCallback() override
    {
        if (m_reply)
            m_reply->deleteLater();
    }

    /// The request was taken up. Once for each request.
    virtual void onStart() {}
    virtual void onReadyRead() {}
    /// Bytes of the whole file; `total` is -1 when the server does not tell. What an earlier attempt brought is counted
    /// in. Neither of the two ever falls.
    virtual void onDownloadProgress(qint64 /*received*/, qint64 /*total*/) {}
    virtual void onUploadProgress(qint64 /*sent*/, qint64 /*total*/) {}
    virtual void onFinished(T result) = 0;
    virtual void onTimeOut() {}
    virtual void onError(QNetworkReply::NetworkError /*error*/) {}
    /// The reply that the request waits for now; null where no network is involved. The callback deletes it.
    virtual void setReply(QNetworkReply* reply) { m_reply = reply; }
    /// Gives up the reply. Call it on the service's thread only.
    virtual void reset()
    {
        if (!m_reply)
            return;
        QNetworkReply* reply = m_reply;
        m_reply = nullptr;
        reply->abort();
        reply->deleteLater();
    }

protected:
    QNetworkReply* m_reply = nullptr;
};
