#include "StatusQueryThread.h"

#include "NetworkStatusMonitor.h"

#include <kiv/system/Connectivity.h>

CStatusQueryThread::CStatusQueryThread(NetworkStatusMonitor& monitor) : m_monitor(monitor)
{
}

void CStatusQueryThread::run()
{
    // Lives on this thread, as it must: it opens and closes what the system needs for being asked here.
    const kiv::system::CConnectivityPoller poller;
    while (poller.CanTell() && !m_monitor.IsStopped()) {
        // Without an answer this time the last one stands.
        if (const std::optional<bool> online = poller.IsOnline())
            m_monitor.SetOnline(*online);
        m_monitor.WaitInterval();
    }
}
