#pragma once

#include <atomic>
#include <mutex>

namespace nuvs {

/// Whether a session is open, as every thread sees it. A logout holds at once, also against a login that was asked for
/// before it and ends after it: each login remembers how many logouts there had been.
class CLoginState {
public:
    bool IsOpen() const { return m_isOpen; }
    unsigned Logouts() const { return m_logouts; }

    /// False when there was a logout since `logouts` was asked.
    bool Open(unsigned logouts)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isOpen = m_isOpen || logouts == m_logouts;
        return logouts == m_logouts;
    }
    void Logout()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        ++m_logouts;
        m_isOpen = false;
    }
    void Lose() { m_isOpen = false; }

private:
    std::mutex m_mutex;
    std::atomic<bool> m_isOpen{false};
    std::atomic<unsigned> m_logouts{0};
};

}  // namespace nuvs
