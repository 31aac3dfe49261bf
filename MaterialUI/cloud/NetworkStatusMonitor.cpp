#include "NetworkStatusMonitor.h"

#include "StatusQueryThread.h"

#include <kiv/system/Connectivity.h>

namespace {

// Makes it while the module is loaded. Whoever asks it links this file, so that no linker drops the line.
[[maybe_unused]] NetworkStatusMonitor& s_monitor = NetworkStatusMonitor::Instance();

}  // namespace

NetworkStatusMonitor& NetworkStatusMonitor::Instance()
{
    static NetworkStatusMonitor monitor;
    return monitor;
}

NetworkStatusMonitor::NetworkStatusMonitor(int interval)
    : m_online(kiv::system::IsOnlineAtStart()), m_interval(interval),
      m_thread(std::make_unique<CStatusQueryThread>(*this))
{
    m_thread->start(QThread::InheritPriority);
}

NetworkStatusMonitor::~NetworkStatusMonitor()
{
    {
        QWriteLocker lock(&m_lock);
        m_stop = true;
    }
    m_stopped.wakeAll();
    m_thread->wait();
}

bool NetworkStatusMonitor::IsOnline() const
{
    QReadLocker lock(&m_lock);
    return m_online;
}

void NetworkStatusMonitor::SetOnline(bool online)
{
    QWriteLocker lock(&m_lock);
    m_online = online;
}

bool NetworkStatusMonitor::IsStopped() const
{
    QReadLocker lock(&m_lock);
    return m_stop;
}

// The interval may pass early, which only means that the system is asked once more.
void NetworkStatusMonitor::WaitInterval()
{
    QReadLocker lock(&m_lock);
    if (!m_stop)
        m_stopped.wait(&m_lock, static_cast<unsigned long>(m_interval));
}
