#pragma once

#include <nuvs/NUVSCloudSettings.h>

namespace nuvs {

/// What was set last. Any thread.
NUVSCloudSettings CloudSettings();

}  // namespace nuvs
