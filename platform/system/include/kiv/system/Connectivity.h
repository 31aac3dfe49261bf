#pragma once

#include <memory>
#include <optional>

/// Whether this machine can reach the Internet, as its operating system sees it. Nothing is sent to find out.
namespace kiv::system {

/// A first answer, quick and strict: in doubt the machine is offline. On Windows a machine with both a local network
/// and a dial-up connection is in doubt. Any thread.
bool IsOnlineAtStart();

/// What one operating system has for asking again and again.
class IConnectivitySource {
public:
    IConnectivitySource() = default;
    virtual ~IConnectivitySource() = default;
    IConnectivitySource(const IConnectivitySource&) = delete;
    IConnectivitySource& operator=(const IConnectivitySource&) = delete;
    /// Nothing when the system does not answer this time.
    virtual std::optional<bool> IsOnline() = 0;
};

/// Asks the system again and again. It is made, asked and destroyed on one thread, since on Windows it opens COM for
/// the thread and closes it at the end.
class CConnectivityPoller {
public:
    CConnectivityPoller();

    /// False when this system has nothing that could be asked. That stays so.
    bool CanTell() const { return m_source != nullptr; }
    /// Nothing when the system cannot tell, for good or this time only.
    std::optional<bool> IsOnline() const;

private:
    std::unique_ptr<IConnectivitySource> m_source;
};

/// For demos and tests, on machines without a way out or with one that should not count: from now on both of the above
/// answer what is said here, or what the system says when nothing is. Any thread.
void OverrideConnectivity(std::optional<bool> online);

/// Overrides as the environment variable MATERIAL_NETWORK says, "online" or "offline"; a variable that is not set or is
/// empty lifts the override. False, and nothing is changed, for any other text. For demos and tests: nothing else reads
/// that variable.
bool OverrideConnectivityFromEnvironment();

}  // namespace kiv::system
