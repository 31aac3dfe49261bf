#pragma once

#include "Answer.h"

#include <QNetworkRequest>
#include <QPair>
#include <QPointer>
#include <QTimer>
#include <QVector>

namespace nuvs {

class CDavConnection;

/// One request to a server.
struct SDavOrder {
    QByteArray verb;
    QUrl url;
    QVector<QPair<QByteArray, QByteArray>> headers;
    QByteArray body;
    QString file;  ///< whose first `fileSize` bytes are the body instead, when not empty
    qint64 fileSize = 0;
    qint64 largestAnswer = 1 << 20;
    /// Takes the body of a successful answer as it comes; false gives the request up, which ends as answered. Without
    /// it the body is collected.
    std::function<bool(QNetworkReply&)> takeData;
};

struct SDavAnswer {
    enum class EOutcome {
        Answered,
        Silent,  ///< nothing was heard for too long
        Broken,  ///< no answer, or not all of it
    };
    static constexpr int Unreadable = -1;

    EOutcome outcome = EOutcome::Answered;
    int status = 0;  ///< of HTTP, or Unreadable for an answer that is too large
    QNetworkReply::NetworkError error = QNetworkReply::NoError;
    QByteArray body;

    bool IsAnswered() const { return outcome == EOutcome::Answered; }
    bool IsSuccess() const { return IsAnswered() && status >= 200 && status < 300; }
};

using DavHandler = std::function<void(const SDavAnswer&)>;

/// Sends an order, answers the server's challenge, waits for the end and tells it once. Follows no redirection.
/// Deletes itself.
class CDavRequest : public QObject {
public:
    CDavRequest(CDavConnection& connection, SDavOrder order, AnswerBasePtr answer, DavHandler handler);

    void Send();
    void Cancel();

private:
    QNetworkRequest Prepare();
    QNetworkReply* Start(const QNetworkRequest& request);
    void Watch();
    void OnProgress(bool isUp, qint64 done, qint64 total);
    void OnReadyRead();
    void OnFinished();
    void OnSilence();
    bool TakeBody();
    bool Resend(int status);
    void GiveUpReply();
    void End(SDavAnswer::EOutcome outcome, int status, QNetworkReply::NetworkError error);

    CDavConnection& m_connection;
    const SDavOrder m_order;
    AnswerBasePtr m_answer;
    DavHandler m_handler;
    QTimer m_silence;
    QPointer<QNetworkReply> m_reply;
    QByteArray m_body;
    int m_resent = 0;
    bool m_wasAuthorised = false;
    bool m_isTooLarge = false;
    bool m_isGivenUp = false;
};

}  // namespace nuvs
