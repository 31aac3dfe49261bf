#pragma once

#include <QReadWriteLock>

/// How many favourites wait for the cloud, got there and failed. Any thread.
class CSynchronizationStatus {
public:
    struct Counts {
        qint32 waiting = 0;
        qint32 succeeded = 0;
        qint32 failed = 0;
    };

    void Set(const Counts& counts);
    Counts Get() const;
    qint32 GetWaiting() const;
    /// One more that waits.
    void CountWaiting();
    /// One that waited arrived, or did not; what nobody waited for is counted all the same.
    void CountSuccess();
    void CountFailure();

private:
    void count(qint32 Counts::*outcome);

    mutable QReadWriteLock m_lock;
    Counts m_counts;
};
