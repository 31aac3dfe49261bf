#include "ConnectivitySource.h"
#include "DefaultRoute.h"

namespace kiv::system {

namespace {

// A laptop without NetworkManager, a container and a server all have these files, so no daemon is asked.
class DefaultRouteSource : public IConnectivitySource {
public:
    std::optional<bool> IsOnline() override { return HasDefaultRoute("/"); }
};

}  // namespace

bool SystemIsOnlineAtStart()
{
    return HasDefaultRoute("/");
}

std::unique_ptr<IConnectivitySource> MakeConnectivitySource()
{
    return std::make_unique<DefaultRouteSource>();
}

}  // namespace kiv::system
