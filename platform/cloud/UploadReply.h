#pragma once

#include <QElapsedTimer>
#include <QFile>
#include <QNetworkReply>
#include <QSslSocket>

namespace nuvs {

/// A PUT of a file over a connection of its own. The network access manager passes a body from thread to thread in
/// pieces of 16 KB, which takes three times the processor time of the server itself, waits 40 ms between the head and a
/// small body, and does not hear a refusal before it sent the whole body. Here the refusal is heard at once.
/// Of the answer only the head is read.
class CUploadReply : public QNetworkReply {
public:
    CUploadReply(const QNetworkRequest& request, const QByteArray& verb, const QString& path, qint64 size);

    void abort() override;
    qint64 bytesAvailable() const override { return 0; }

protected:
    qint64 readData(char* /*data*/, qint64 /*most*/) override { return -1; }

private:
    void Connect();
    void SendHead();
    qint64 Unsent() const;
    void Fill();
    void OnWritten();
    void OnReadyRead();
    void OnSocketError(QAbstractSocket::SocketError error);
    bool TakeHead();
    void Finish(NetworkError error, const QString& text);

    QSslSocket m_socket;
    QFile m_file;
    const QByteArray m_verb;
    const qint64 m_size;
    qint64 m_left;
    QByteArray m_head;
    QElapsedTimer m_told;
};

}  // namespace nuvs
