#pragma once

#include <string>

namespace kiv::system {

#ifdef _WIN32
using MachinePath = std::wstring;
#else
using MachinePath = std::string;
#endif

/// The number of bytes of the regular file at the path, or -1 when it is none. Never opens it: opening a pipe would
/// block, and opening a device may do anything. Links are followed.
long long RegularFileSize(const MachinePath& path);

}  // namespace kiv::system
