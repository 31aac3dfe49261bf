#include "CloudRequest.h"

#include <QSslConfiguration>

void trustOnly(const QByteArray& certificates)
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setCaCertificates(QSslCertificate::fromData(certificates));
    QSslConfiguration::setDefaultConfiguration(configuration);
}

namespace CloudRequests {

namespace {

INUVSFileService& files()
{
    return *getNUVSCloudService()->fileService();
}

INUVSAccountService& accounts()
{
    return *getNUVSCloudService()->accountService();
}

}  // namespace

CCloudRequest<NUVSLoginInfo> Login(const CCloudAccount& account)
{
    return CCloudRequest<NUVSLoginInfo>::Make([&](auto* callback) {
        accounts().login(account.user, account.password, account.address, QStringLiteral("1.0"), account.product,
                         callback);
    });
}

CCloudRequest<NUVSLogoutInfo> Logout()
{
    return CCloudRequest<NUVSLogoutInfo>::Make([](auto* callback) { accounts().logout(callback); });
}

CCloudRequest<NUVSCloudChildren> Children(const QString& folderId)
{
    return CCloudRequest<NUVSCloudChildren>::Make([&](auto* callback) { files().children(folderId, callback); });
}

CCloudRequest<NUVSCloudCreateFolder> CreateFolder(const QString& name, const QString& parentId)
{
    return CCloudRequest<NUVSCloudCreateFolder>::Make(
        [&](auto* callback) { files().createFolder(name, parentId, callback); });
}

CCloudRequest<NUVSCloudUploadFile> Upload(const QString& folderId, const QString& localPath)
{
    return CCloudRequest<NUVSCloudUploadFile>::Make(
        [&](auto* callback) { files().upload(folderId, localPath, callback); });
}

CCloudRequest<NUVSBaseInfo> Download(const QString& fileId, const QString& localPath)
{
    return CCloudRequest<NUVSBaseInfo>::Make([&](auto* callback) { files().download(fileId, localPath, callback); });
}

CCloudRequest<NUVSCloudDelFile> Delete(const QString& id)
{
    return CCloudRequest<NUVSCloudDelFile>::Make([&](auto* callback) { files().deleteFile(id, callback); });
}

}  // namespace CloudRequests
