#pragma once

#include <kiv/system/Connectivity.h>

/// What each operating system has a file for. No Qt, so that it can be compiled and tried on its own.
namespace kiv::system {

bool SystemIsOnlineAtStart();

/// Null when the system cannot be asked.
std::unique_ptr<IConnectivitySource> MakeConnectivitySource();

}  // namespace kiv::system
