// Calls what platform/system asks Windows for, on the system itself. Exit status 1 when something does not answer, or
// not as it must. Not a Qt program: it is compiled with nothing but the Windows files of that room.
#include "ConnectivityWindows.h"
#include "RegularFile.h"

#include <kiv/system/Connectivity.h>

#include <windows.h>

#include <sensapi.h>

#include <cstdio>

namespace {

bool s_ok = true;

void expect(bool condition, const char* what)
{
    std::printf("%s: %s\n", condition ? "ok" : "WRONG", what);
    s_ok = s_ok && condition;
}

void tryNetworkAlive()
{
    using kiv::system::MeansOneNetwork;
    DWORD flags = 0;
    SetLastError(ERROR_SUCCESS);
    IsNetworkAlive(&flags);
    const DWORD error = GetLastError();
    std::printf("IsNetworkAlive: error %lu, flags %lu\n", error, flags);
    expect(error == ERROR_SUCCESS, "IsNetworkAlive answers");
    expect(kiv::system::IsOnlineAtStart() == MeansOneNetwork(error, flags), "the start answer is made of it");
    expect(MeansOneNetwork(0, NETWORK_ALIVE_LAN) && MeansOneNetwork(0, NETWORK_ALIVE_WAN), "one network is online");
    expect(!MeansOneNetwork(0, 0) && !MeansOneNetwork(0, NETWORK_ALIVE_LAN | NETWORK_ALIVE_WAN) &&
               !MeansOneNetwork(0, NETWORK_ALIVE_AOL) && !MeansOneNetwork(ERROR_NOT_SUPPORTED, NETWORK_ALIVE_LAN),
           "none, several and an error are offline");
}

void tryNetworkList()
{
    // Twice, since the second one finds COM closed by the first.
    for (int round = 0; round < 2; ++round) {
        const kiv::system::CConnectivityPoller poller;
        expect(poller.CanTell(), "the Network List Manager is there");
        const std::optional<bool> online = poller.IsOnline();
        std::printf("INetworkListManager: %s\n", online ? (*online ? "online" : "offline") : "no answer");
        expect(online.has_value(), "the Network List Manager answers");
    }
}

void tryOverride()
{
    const kiv::system::CConnectivityPoller poller;
    for (const bool online : {true, false}) {
        kiv::system::OverrideConnectivity(online);
        expect(kiv::system::IsOnlineAtStart() == online && poller.IsOnline() == online, "an override holds");
    }
    kiv::system::OverrideConnectivity(std::nullopt);
}

void tryRegularFiles(const wchar_t* ownPath)
{
    using kiv::system::RegularFileSize;
    expect(RegularFileSize(ownPath) > 1024, "this program has a size");
    expect(RegularFileSize(L"C:\\windows") == -1, "a folder has none");
    expect(RegularFileSize(L"C:\\windows\\no such file") == -1, "a missing file has none");
    for (const wchar_t* device : {L"NUL", L"C:\\windows\\NUL", L"CON", L"COM1"})
        expect(RegularFileSize(device) == -1, "a device has none");
}

}  // namespace

int wmain(int, wchar_t** arguments)
{
    tryNetworkAlive();
    tryNetworkList();
    tryOverride();
    tryRegularFiles(arguments[0]);
    return s_ok ? 0 : 1;
}
