#include "DavPath.h"

#include <algorithm>

namespace nuvs {

namespace {

// Names as the server stores them: bytes, so that what is no UTF-8 is not taken for something else.
QList<QByteArray> segments(const QUrl& url)
{
    QList<QByteArray> decoded;
    for (const QByteArray& segment : url.path(QUrl::FullyEncoded).toLatin1().split('/')) {
        if (!segment.isEmpty())
            decoded.append(QByteArray::fromPercentEncoding(segment));
    }
    return decoded;
}

bool isSameHost(const QUrl& reference, const QUrl& folder)
{
    return reference.host().isEmpty() || reference.host() == folder.host();
}

}  // namespace

QUrl FileUrl(const QUrl& folder, const QStringList& names)
{
    QString path = folder.path(QUrl::FullyEncoded);
    for (const QString& name : names) {
        if (!path.endsWith(QLatin1Char('/')))
            path += QLatin1Char('/');
        path += QString::fromLatin1(QUrl::toPercentEncoding(name));
    }
    QUrl url = folder;
    url.setPath(path, QUrl::TolerantMode);
    return url;
}

QUrl FolderUrl(const QUrl& folder, const QStringList& names)
{
    QUrl url = FileUrl(folder, names);
    const QString path = url.path(QUrl::FullyEncoded);
    if (!path.endsWith(QLatin1Char('/')))
        url.setPath(path + QLatin1Char('/'), QUrl::TolerantMode);
    return url;
}

EPlace PlaceOf(const QString& reference, const QUrl& folder, QString& name)
{
    const QUrl url(reference.trimmed());
    if (!url.isValid() || !isSameHost(url, folder) || !url.path().startsWith(QLatin1Char('/')))
        return EPlace::Elsewhere;
    const QList<QByteArray> own = segments(folder);
    const QList<QByteArray> theirs = segments(url);
    if (theirs.size() < own.size() || !std::equal(own.cbegin(), own.cend(), theirs.cbegin()))
        return EPlace::Elsewhere;
    if (theirs.size() == own.size())
        return EPlace::Itself;
    name = QString::fromUtf8(theirs.last());
    const bool isChild = theirs.size() == own.size() + 1 && name.toUtf8() == theirs.last();
    return isChild ? EPlace::Child : EPlace::Elsewhere;
}

}  // namespace nuvs
