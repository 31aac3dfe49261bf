#include "ApacheConfiguration.h"

#include <QCryptographicHash>
#include <QDir>
#include <QSaveFile>
#include <QTextStream>

#include <unistd.h>

namespace {

constexpr uid_t Nobody = 65534;
const char s_realm[] = "cloud";

void write(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        qFatal("cannot write %s", qPrintable(path));
}

// The formats of htpasswd -s and of htdigest.
QByteArray passwordLine(const CWebDavSettings& settings)
{
    const QByteArray user = settings.user.toUtf8(), password = settings.password.toUtf8();
    if (settings.authentication == CWebDavSettings::Basic)
        return user + ":{SHA}" + QCryptographicHash::hash(password, QCryptographicHash::Sha1).toBase64() + '\n';
    const QByteArray identity = user + ':' + s_realm + ':';
    return identity + QCryptographicHash::hash(identity + password, QCryptographicHash::Md5).toHex() + '\n';
}

QString modules(const CWebDavSettings& settings)
{
    QStringList names = {
        "mpm_event",  "authn_core",
        "authn_file", "authz_core",
        "authz_user", "dav",
        "dav_fs",     settings.authentication == CWebDavSettings::Basic ? "auth_basic" : "auth_digest"};
    if (settings.tls)
        names += {"socache_shmcb", "ssl"};
    QString lines;
    for (const QString& name : names)
        lines += QStringLiteral("LoadModule %1_module \"/usr/lib/apache2/modules/mod_%1.so\"\n").arg(name);
    return lines;
}

QString owner(const QString& folder)
{
    if (geteuid() != 0)
        return {};
    for (const QString& path : {folder, folder + "/documents", folder + "/locks"})
        if (chown(QFile::encodeName(path).constData(), Nobody, Nobody) != 0)
            qFatal("cannot give away %s", qPrintable(path));
    return QStringLiteral("User \"#%1\"\nGroup \"#%1\"\n").arg(Nobody);
}

}  // namespace

void WriteApacheConfiguration(const CWebDavSettings& settings, const QString& folder, int port)
{
    QDir().mkpath(folder + "/locks");
    write(folder + "/passwords", passwordLine(settings));
    QString text;
    QTextStream out(&text);
    out << modules(settings) << owner(folder) << "ServerRoot \"" << folder << "\"\n"
        << "ServerName 127.0.0.1\nListen 127.0.0.1:" << port << "\nPidFile apache.pid\nDefaultRuntimeDir .\n"
        << "ErrorLog error.log\nMutex posixsem\nThreadsPerChild 16\nMaxRequestWorkers 16\n"
        << "DocumentRoot documents\nDAVLockDB locks/db\nLimitRequestBody 0\n";
    if (settings.tls)
        out << "SSLEngine on\nSSLCertificateFile certificate.pem\nSSLCertificateKeyFile key.pem\n";
    out << "<Directory \"" << folder << "/documents\">\n  Dav On\n";
    if (settings.authentication == CWebDavSettings::Basic)
        out << "  AuthType Basic\n  AuthBasicProvider file\n";
    else
        out << "  AuthType Digest\n  AuthDigestProvider file\n";
    out << "  AuthName \"" << s_realm << "\"\n  AuthUserFile passwords\n  Require valid-user\n</Directory>\n";
    out.flush();
    write(folder + "/apache.conf", text.toUtf8());
}
