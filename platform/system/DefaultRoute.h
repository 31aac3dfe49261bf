#pragma once

#include <string>

namespace kiv::system {

/// Whether an interface that is up carries a default route of IPv4 or IPv6, by the kernel's files below `root`: the
/// main routing tables in proc/net, the interfaces in sys/class/net. What is missing or cannot be understood counts as
/// no route. `root` ends with a separator.
bool HasDefaultRoute(const std::string& root);

}  // namespace kiv::system
