#include "Settings.h"

#include <mutex>

namespace nuvs {

namespace {

struct SGuardedSettings {
    std::mutex mutex;
    NUVSCloudSettings settings;
};

SGuardedSettings& guardedSettings()
{
    static SGuardedSettings settings;
    return settings;
}

}  // namespace

NUVSCloudSettings CloudSettings()
{
    SGuardedSettings& guarded = guardedSettings();
    const std::lock_guard<std::mutex> lock(guarded.mutex);
    return guarded.settings;
}

}  // namespace nuvs

void setNUVSCloudSettings(const NUVSCloudSettings& settings)
{
    nuvs::SGuardedSettings& guarded = nuvs::guardedSettings();
    const std::lock_guard<std::mutex> lock(guarded.mutex);
    guarded.settings = settings;
}
