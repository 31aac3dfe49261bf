#include "TourCloud.h"

#include "TourChecks.h"

#include <nuvs/NUVSCloudSettings.h>

#ifdef MATERIAL_TOUR_SERVERS
#include <WebDavServer.h>
#else
class CWebDavServer {};
#endif

TourCloud::TourCloud(HostOptions& options)
{
    options.cloudUser = QStringLiteral("architect");
    options.cloudAddress.clear();
    options.cloudFolder = m_place.path();
    m_folder = m_place.filePath(options.cloudUser);
    if (qEnvironmentVariable("MATERIAL_CLOUD") == "webdav")
        startServer(options);
    NUVSCloudSettings settings;
    settings.localFolder = options.cloudFolder;
    setNUVSCloudSettings(settings);
    m_account = options;
}

TourCloud::~TourCloud() = default;

#ifdef MATERIAL_TOUR_SERVERS
void TourCloud::startServer(HostOptions& options)
{
    CWebDavSettings settings;
    settings.user = options.cloudUser;
    m_server = std::make_unique<CWebDavServer>(settings);
    TourChecks::expect(m_server->GetError().isEmpty(), "a WebDAV server starts: " + m_server->GetError());
    options.cloudAddress = m_server->GetAddress();
    qputenv("MATERIAL_CLOUD_PASSWORD", settings.password.toUtf8());
    m_folder = m_server->GetFolder();
}
#else
void TourCloud::startServer(HostOptions&)
{
    throw TourFailure("MATERIAL_CLOUD=webdav needs a program that was built with the tests");
}
#endif

QStringList TourCloud::arguments() const
{
    QStringList arguments{"--cloud-user", m_account.cloudUser, "--cloud-folder", m_account.cloudFolder};
    if (!m_account.cloudAddress.isEmpty())
        arguments += {"--cloud-address", m_account.cloudAddress};
    return arguments;
}
