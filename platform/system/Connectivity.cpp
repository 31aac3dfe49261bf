#include "ConnectivitySource.h"

#include <atomic>
#include <cstdlib>
#include <string>

namespace kiv::system {

namespace {

enum class Override { None, Online, Offline };

// Asked by a thread that may outlive main(): it needs no construction and no destruction.
std::atomic<Override> s_override{Override::None};

std::optional<bool> overridden()
{
    const Override value = s_override;
    return value == Override::None ? std::nullopt : std::optional<bool>(value == Override::Online);
}

}  // namespace

bool IsOnlineAtStart()
{
    const std::optional<bool> said = overridden();
    return said ? *said : SystemIsOnlineAtStart();
}

CConnectivityPoller::CConnectivityPoller() : m_source(MakeConnectivitySource())
{
}

std::optional<bool> CConnectivityPoller::IsOnline() const
{
    const std::optional<bool> said = overridden();
    return said || !m_source ? said : m_source->IsOnline();
}

void OverrideConnectivity(std::optional<bool> online)
{
    if (online)
        s_override = *online ? Override::Online : Override::Offline;
    else
        s_override = Override::None;
}

bool OverrideConnectivityFromEnvironment()
{
    const char* variable = std::getenv("MATERIAL_NETWORK");
    const std::string text = variable ? variable : "";
    if (!text.empty() && text != "online" && text != "offline")
        return false;
    OverrideConnectivity(text.empty() ? std::nullopt : std::optional<bool>(text == "online"));
    return true;
}

}  // namespace kiv::system
