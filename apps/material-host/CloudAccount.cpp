#include "CloudAccount.h"

#include "HostOptions.h"

#include <QUrl>

namespace {

const QString UserKey = QStringLiteral("cloud/user");
const QString AddressKey = QStringLiteral("cloud/address");

QString systemUser()
{
    const QString user = qEnvironmentVariable("USER", qEnvironmentVariable("USERNAME"));
    return user.isEmpty() ? QStringLiteral("local") : user;
}

}  // namespace

// A password on the command line could be read by everybody on the machine.
CloudAccount::CloudAccount(const HostOptions& options)
    : m_settings(options.profile + "/material-host.ini", QSettings::IniFormat), m_user(options.cloudUser),
      m_address(options.cloudAddress), m_password(qEnvironmentVariable("MATERIAL_CLOUD_PASSWORD"))
{
}

QString CloudAccount::user() const
{
    return !m_user.isEmpty() ? m_user : m_settings.value(UserKey, systemUser()).toString();
}

QString CloudAccount::address() const
{
    return !m_address.isEmpty() ? m_address : m_settings.value(AddressKey).toString();
}

// A server is of no use before the user has entered the password.
bool CloudAccount::GetLoginInfo(LoginAccountInfo& info)
{
    const bool isServer = QUrl(address()).scheme().startsWith("http");
    if (m_isSignedOut || (isServer && m_password.isEmpty()))
        return false;
    info.a = user();
    info.b = m_password;
    info.c = address();
    return true;
}

void CloudAccount::set(const QString& user, const QString& password, const QString& address)
{
    m_user.clear();
    m_address.clear();
    m_settings.setValue(UserKey, user);
    m_settings.setValue(AddressKey, address);
    m_password = password;
    m_isSignedOut = false;
}
