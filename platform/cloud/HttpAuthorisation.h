#pragma once

#include <QElapsedTimer>
#include <QMap>
#include <QString>
#include <QUrl>
#include <QVector>

namespace nuvs {

/// Answers a server's challenges (Basic; Digest with MD5 or SHA-256) with the credentials of one account. The header is
/// made here and not left to the network access manager, which answers with it only once it was asked on that very
/// connection, and answers proxies, too.
class CHttpAuthorisation {
public:
    CHttpAuthorisation(QString user, QString password) : m_user(std::move(user)), m_password(std::move(password)) {}

    /// Takes up a "WWW-Authenticate" header. `wasAuthorised`: the request that was refused carried an answer. True when
    /// the request is worth sending again.
    bool TakeChallenge(const QByteArray& header, bool wasAuthorised);

    /// The "Authorization" header for a request; empty while no server asked for it.
    QByteArray Header(const QByteArray& verb, const QUrl& url);

    /// True when the server may ask anew: better send it something small first.
    bool MayBeStale() const;

private:
    enum class EScheme { None, Basic, Digest };
    struct SChallenge {
        EScheme scheme = EScheme::None;
        QMap<QByteArray, QByteArray> parameters;
    };

    static QVector<SChallenge> Parse(const QByteArray& header);
    bool CanAnswer(const SChallenge& challenge) const;
    QByteArray Basic() const;
    QByteArray Digest(const QByteArray& verb, const QUrl& url);

    const QString m_user;
    const QString m_password;
    SChallenge m_challenge;
    unsigned m_count = 0;  ///< of requests with this challenge
    QElapsedTimer m_age;
};

}  // namespace nuvs
