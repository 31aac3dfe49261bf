#pragma once

#include <QReadWriteLock>

/// How many favourites wait for the cloud, got there and failed; those that are to be removed there are counted with
/// them, but are no part of a synchronisation. Any thread.
class CSynchronizationStatus {
public:
    struct Counts {
        qint32 waiting = 0;
        qint32 succeeded = 0;
        qint32 failed = 0;
    };

    /// For a synchronisation: leaves what waits to be removed.
    void Set(const Counts& counts);
    /// All that wait.
    Counts Get() const;
    /// Those of a synchronisation.
    qint32 GetWaiting() const;
    bool IsIdle() const;
    /// One that waited arrived, or did not; what nobody waited for is counted all the same.
    void CountSuccess();
    void CountFailure();
    /// A removal begins, and ends.
    void CountRemoval();
    void CountRemovalEnd(bool isSuccess);

private:
    void count(qint32 Counts::*outcome);

    mutable QReadWriteLock m_lock;
    Counts m_counts;
    qint32 m_removals = 0;  ///< under way
};
