#include "AccountAddress.h"

#include "RemoteName.h"

#include <QDir>
#include <QStandardPaths>

#include <algorithm>

namespace nuvs {

namespace {

QString localFolder(const NUVSCloudSettings& settings)
{
    if (!settings.localFolder.isEmpty())
        return settings.localFolder;
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + QStringLiteral("/cloud");
}

bool readLocalDefault(const NUVSCloudSettings& settings, SAccount& account)
{
    const QString user = account.user.isEmpty() ? QStringLiteral("local") : account.user;
    if (!IsRemoteName(user))
        return false;
    const QString folder = QDir::cleanPath(localFolder(settings) + QLatin1Char('/') + user);
    account.address = QUrl::fromLocalFile(folder);
    account.makesAddress = true;
    return true;
}

bool isFollowed(const QUrl& address)
{
    if (!address.isValid() || !address.userInfo().isEmpty() || address.hasQuery() || address.hasFragment())
        return false;
    if (address.scheme() == QLatin1String("file"))
        return QDir::isAbsolutePath(address.toLocalFile());
    const bool isWeb = address.scheme() == QLatin1String("http") || address.scheme() == QLatin1String("https");
    return isWeb && !address.host().isEmpty();
}

// It goes into a header line.
bool hasControl(const QString& text)
{
    return std::any_of(text.cbegin(), text.cend(), [](QChar c) { return c.category() == QChar::Other_Control; });
}

}  // namespace

bool ReadAddress(const QString& address, const NUVSCloudSettings& settings, SAccount& account)
{
    if (!IsRemoteName(account.product) || hasControl(account.user))
        return false;
    if (address.trimmed().isEmpty())
        return readLocalDefault(settings, account);
    const QUrl url(address.trimmed());
    if (!isFollowed(url))
        return false;
    account.address = url.adjusted(QUrl::NormalizePathSegments | QUrl::StripTrailingSlash);
    // One writing for the same place: accounts are compared.
    if (account.address.path() == QLatin1String("/"))
        account.address.setPath({});
    return true;
}

}  // namespace nuvs
