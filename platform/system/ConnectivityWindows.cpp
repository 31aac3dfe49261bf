#include "ConnectivityWindows.h"
#include "ConnectivitySource.h"

#include <windows.h>

#include <netlistmgr.h>
#include <objbase.h>
#include <sensapi.h>

namespace kiv::system {

namespace {

class ComOfThread {
public:
    ComOfThread() : m_result(CoInitializeEx(nullptr, COINIT_MULTITHREADED)) {}
    ~ComOfThread()
    {
        if (SUCCEEDED(m_result))
            CoUninitialize();
    }
    ComOfThread(const ComOfThread&) = delete;
    ComOfThread& operator=(const ComOfThread&) = delete;

private:
    // Fails when the thread has COM in another mode already, in which it can be used just as well.
    const HRESULT m_result;
};

struct ReleaseManager {
    void operator()(INetworkListManager* manager) const { manager->Release(); }
};

HRESULT askManager(INetworkListManager& manager, VARIANT_BOOL& answer)
{
    // One and the same slot under the name that each set of headers has for it.
#ifdef __MINGW32__
    return manager.IsConnectedToInternet(&answer);
#else
    return manager.get_IsConnectedToInternet(&answer);
#endif
}

class NetworkListSource : public IConnectivitySource {
public:
    NetworkListSource()
    {
        INetworkListManager* manager = nullptr;
        if (SUCCEEDED(CoCreateInstance(CLSID_NetworkListManager, nullptr, CLSCTX_ALL, IID_INetworkListManager,
                                       reinterpret_cast<void**>(&manager))))
            m_manager.reset(manager);
    }
    bool HasManager() const { return m_manager != nullptr; }
    std::optional<bool> IsOnline() override
    {
        VARIANT_BOOL answer = VARIANT_FALSE;
        if (FAILED(askManager(*m_manager, answer)))
            return std::nullopt;
        return answer == VARIANT_TRUE;
    }

private:
    // In this order: what was made with COM goes before COM does.
    ComOfThread m_com;
    std::unique_ptr<INetworkListManager, ReleaseManager> m_manager;
};

}  // namespace

bool MeansOneNetwork(unsigned long error, unsigned long flags)
{
    return error == ERROR_SUCCESS && (flags == NETWORK_ALIVE_LAN || flags == NETWORK_ALIVE_WAN);
}

bool SystemIsOnlineAtStart()
{
    DWORD flags = 0;
    // The call tells of its failures by this alone, and leaves what was there before when it has none.
    SetLastError(ERROR_SUCCESS);
    IsNetworkAlive(&flags);
    return MeansOneNetwork(GetLastError(), flags);
}

std::unique_ptr<IConnectivitySource> MakeConnectivitySource()
{
    auto source = std::make_unique<NetworkListSource>();
    if (!source->HasManager())
        return nullptr;
    return source;
}

}  // namespace kiv::system
