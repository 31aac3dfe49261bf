#pragma once

#include "HostOptions.h"

#include <QStringList>
#include <QTemporaryDir>

#include <memory>

class CWebDavServer;

/// Where the tour's favourites are mirrored: a folder of its own or, with MATERIAL_CLOUD=webdav in the environment, a
/// WebDAV server that it starts.
class TourCloud {
public:
    /// Enters the account into the options. Throws TourFailure when the server does not start.
    explicit TourCloud(HostOptions& options);
    ~TourCloud();

    /// The account's files on this machine.
    QString folder() const { return m_folder; }
    /// What another process needs to use the same account.
    QStringList arguments() const;

private:
    void startServer(HostOptions& options);

    QTemporaryDir m_place;
    std::unique_ptr<CWebDavServer> m_server;
    HostOptions m_account;
    QString m_folder;
};
