#pragma once

#include <QReadWriteLock>
#include <QWaitCondition>

#include <memory>

class CStatusQueryThread;

/// Knows whether this machine is online, and asks again twice a second in a thread of its own. There is one for the
/// process, made when the module is loaded. Any thread.
class NetworkStatusMonitor {
public:
    static constexpr int DefaultInterval = 500;  // ms

    /// The one of the process.
    static NetworkStatusMonitor& Instance();

    /// Starts asking at once. Use Instance(); the product needs no second one.
    explicit NetworkStatusMonitor(int interval = DefaultInterval);
    /// Ends the thread without waiting for the next time to ask.
    ~NetworkStatusMonitor();
    NetworkStatusMonitor(const NetworkStatusMonitor&) = delete;
    NetworkStatusMonitor& operator=(const NetworkStatusMonitor&) = delete;

    /// What was heard last; until the thread has asked, a strict first answer.
    bool IsOnline() const;

private:
    friend class CStatusQueryThread;

    void SetOnline(bool online);
    bool IsStopped() const;
    void WaitInterval();

    mutable QReadWriteLock m_lock;
    QWaitCondition m_stopped;
    bool m_online;
    bool m_stop = false;
    int m_interval;  // ms
    std::unique_ptr<CStatusQueryThread> m_thread;
};
