#pragma once

#include <QString>

/// What the executable decides about the service; not part of the contract that the product uses.
struct NUVSCloudSettings {
    /// A request during which nothing is heard for so long ends in onTimeOut.
    int silenceMs = 30000;
    /// Where accounts without a server address keep their files; empty: "cloud" in the user's data folder of this
    /// application. Each user gets a folder in it.
    QString localFolder;
};

/// For requests that begin after it. Any thread.
void setNUVSCloudSettings(const NUVSCloudSettings& settings);
