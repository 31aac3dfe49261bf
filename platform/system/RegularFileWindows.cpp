#include "RegularFile.h"

#include <windows.h>

namespace kiv::system {

namespace {

// "NUL", "CON", "COM1" and the like name a device in every folder, and the attribute functions answer for some of them
// as if they were files. Their full path tells: it is one of the device name space.
bool isDeviceName(const MachinePath& path)
{
    wchar_t full[MAX_PATH];
    const DWORD length = GetFullPathNameW(path.c_str(), MAX_PATH, full, nullptr);
    const MachinePath text(full, length < MAX_PATH ? length : 0);
    return text.rfind(L"\\\\.\\", 0) == 0;
}

}  // namespace

long long RegularFileSize(const MachinePath& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (isDeviceName(path) || !GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data))
        return -1;
    if (data.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE))
        return -1;
    return (static_cast<long long>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
}

}  // namespace kiv::system
