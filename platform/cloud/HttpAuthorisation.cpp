#include "HttpAuthorisation.h"

#include <QCryptographicHash>
#include <QRandomGenerator>

#include <algorithm>
#include <array>
#include <cstring>

namespace nuvs {

namespace {

// Servers let a challenge live for minutes.
constexpr qint64 StaleAfterMs = 60000;

QByteArray quoted(QByteArray text)
{
    text.replace('\\', "\\\\").replace('"', "\\\"");
    return '"' + text + '"';
}

/// Walks over the tokens of a header.
class CHeaderWalk {
public:
    explicit CHeaderWalk(const QByteArray& text) : m_text(text) {}

    bool AtEnd()
    {
        while (m_at < m_text.size() && (isBlank(m_text[m_at]) || m_text[m_at] == ','))
            ++m_at;
        return m_at >= m_text.size();
    }
    QByteArray Token()
    {
        const int start = m_at;
        while (m_at < m_text.size() && !isBlank(m_text[m_at]) && !std::strchr(",=\"", m_text[m_at]))
            ++m_at;
        // A character that fits nowhere must not hold up the walk.
        if (m_at == start)
            ++m_at;
        return m_text.mid(start, m_at - start);
    }
    bool TakeEquals()
    {
        int at = m_at;
        while (at < m_text.size() && isBlank(m_text[at]))
            ++at;
        if (at >= m_text.size() || m_text[at] != '=')
            return false;
        m_at = at + 1;
        while (m_at < m_text.size() && isBlank(m_text[m_at]))
            ++m_at;
        return true;
    }
    QByteArray Value() { return m_at < m_text.size() && m_text[m_at] == '"' ? QuotedText() : Token(); }

private:
    static bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

    QByteArray QuotedText()
    {
        QByteArray text;
        for (++m_at; m_at < m_text.size() && m_text[m_at] != '"'; ++m_at) {
            if (m_text[m_at] == '\\' && m_at + 1 < m_text.size())
                ++m_at;
            text += m_text[m_at];
        }
        ++m_at;
        return text;
    }

    const QByteArray m_text;
    int m_at = 0;
};

QCryptographicHash::Algorithm algorithmOf(const QByteArray& name)
{
    return name.toUpper() == "SHA-256" ? QCryptographicHash::Sha256 : QCryptographicHash::Md5;
}

bool hasControl(const QByteArray& text)
{
    return std::any_of(text.cbegin(), text.cend(), [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

bool offersAuth(const QByteArray& qop)
{
    const QList<QByteArray> offers = qop.toLower().split(',');
    return std::any_of(offers.cbegin(), offers.cend(),
                       [](const QByteArray& offer) { return offer.trimmed() == "auth"; });
}

// What stands in the request line; it must be the same to the byte.
QByteArray requestTarget(QUrl url)
{
    if (url.path().isEmpty())
        url.setPath(QStringLiteral("/"));
    return url.toEncoded(QUrl::RemoveScheme | QUrl::RemoveAuthority | QUrl::RemoveFragment |
                         QUrl::NormalizePathSegments | QUrl::FullyEncoded);
}

QByteArray freshNonce()
{
    std::array<quint32, 4> words = {};
    QRandomGenerator::system()->fillRange(words.data(), words.size());
    return QByteArray(reinterpret_cast<const char*>(words.data()), sizeof(words)).toHex();
}

}  // namespace

QVector<CHttpAuthorisation::SChallenge> CHttpAuthorisation::Parse(const QByteArray& header)
{
    QVector<SChallenge> challenges;
    CHeaderWalk walk(header);
    while (!walk.AtEnd()) {
        const QByteArray token = walk.Token().toLower();
        if (!walk.TakeEquals()) {
            challenges.append(SChallenge());
            challenges.last().scheme = token == "basic"    ? EScheme::Basic
                                       : token == "digest" ? EScheme::Digest
                                                           : EScheme::None;
        } else {
            const QByteArray value = walk.Value();
            if (!challenges.isEmpty())
                challenges.last().parameters[token] = value;
        }
    }
    return challenges;
}

bool CHttpAuthorisation::CanAnswer(const SChallenge& challenge) const
{
    // There the colon ends the name: the rest would count as password, and the name as another user's.
    if (challenge.scheme == EScheme::Basic)
        return !m_user.contains(QLatin1Char(':'));
    if (challenge.scheme != EScheme::Digest)
        return false;
    const auto& given = challenge.parameters;
    const QByteArray algorithm = given.value("algorithm", "MD5").toUpper();
    // They are sent back in a line of the head.
    if (std::any_of(given.cbegin(), given.cend(), hasControl))
        return false;
    return !given.value("nonce").isEmpty() && (algorithm == "MD5" || algorithm == "SHA-256") &&
           (!given.contains("qop") || offersAuth(given["qop"]));
}

bool CHttpAuthorisation::TakeChallenge(const QByteArray& header, bool wasAuthorised)
{
    if (m_user.isEmpty() && m_password.isEmpty())
        return false;
    SChallenge best;
    for (const SChallenge& challenge : Parse(header)) {
        if (CanAnswer(challenge) && int(challenge.scheme) > int(best.scheme))
            best = challenge;
    }
    // Whoever asked for a digest once is not told the password itself later.
    if (best.scheme == EScheme::None || int(best.scheme) < int(m_challenge.scheme))
        return false;
    const bool isNew = best.parameters.value("nonce") != m_challenge.parameters.value("nonce");
    if (wasAuthorised && !(isNew && best.parameters.value("stale").toLower() == "true"))
        return false;
    if (isNew || best.scheme != m_challenge.scheme)
        m_count = 0;
    m_challenge = best;
    m_age.start();
    return true;
}

QByteArray CHttpAuthorisation::Header(const QByteArray& verb, const QUrl& url)
{
    switch (m_challenge.scheme) {
    case EScheme::None:
        return {};
    case EScheme::Basic:
        return Basic();
    case EScheme::Digest:
        return Digest(verb, url);
    }
    return {};
}

bool CHttpAuthorisation::MayBeStale() const
{
    return m_challenge.scheme == EScheme::Digest && m_age.hasExpired(StaleAfterMs);
}

QByteArray CHttpAuthorisation::Basic() const
{
    return "Basic " + (m_user + QLatin1Char(':') + m_password).toUtf8().toBase64();
}

QByteArray CHttpAuthorisation::Digest(const QByteArray& verb, const QUrl& url)
{
    const auto& given = m_challenge.parameters;
    const auto hash = [algorithm = algorithmOf(given["algorithm"])](const QByteArray& text) {
        return QCryptographicHash::hash(text, algorithm).toHex();
    };
    const QByteArray user = m_user.toUtf8();
    const QByteArray realm = given["realm"];
    const QByteArray nonce = given["nonce"];
    const QByteArray target = requestTarget(url);
    const QByteArray secret = hash(user + ':' + realm + ':' + m_password.toUtf8());
    const QByteArray action = hash(verb + ':' + target);
    QByteArray header = "Digest username=" + quoted(user) + ", realm=" + quoted(realm) + ", nonce=" + quoted(nonce) +
                        ", uri=" + quoted(target);
    if (given.contains("qop")) {
        const QByteArray count = QByteArray::number(++m_count, 16).rightJustified(8, '0');
        const QByteArray own = freshNonce();
        header += ", qop=auth, nc=" + count + ", cnonce=" + quoted(own) +
                  ", response=" + quoted(hash(secret + ':' + nonce + ':' + count + ':' + own + ":auth:" + action));
    } else {
        header += ", response=" + quoted(hash(secret + ':' + nonce + ':' + action));
    }
    if (given.contains("algorithm"))
        header += ", algorithm=" + given["algorithm"];
    if (given.contains("opaque"))
        header += ", opaque=" + quoted(given["opaque"]);
    return header;
}

}  // namespace nuvs
