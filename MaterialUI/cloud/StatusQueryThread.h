#pragma once

#include <QThread>

class NetworkStatusMonitor;

/// Asks the system whether it is online and tells the monitor, until the monitor stops it or the system turns out to
/// have nothing that could be asked.
class CStatusQueryThread : public QThread {
    Q_OBJECT

public:
    /// The monitor must outlive the thread.
    explicit CStatusQueryThread(NetworkStatusMonitor& monitor);

protected:
    void run() override;

private:
    NetworkStatusMonitor& m_monitor;
};
