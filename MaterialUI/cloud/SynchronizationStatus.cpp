#include "SynchronizationStatus.h"

void CSynchronizationStatus::Set(const Counts& counts)
{
    const QWriteLocker locker(&m_lock);
    m_counts = counts;
}

CSynchronizationStatus::Counts CSynchronizationStatus::Get() const
{
    const QReadLocker locker(&m_lock);
    return m_counts;
}

qint32 CSynchronizationStatus::GetWaiting() const
{
    const QReadLocker locker(&m_lock);
    return m_counts.waiting;
}

void CSynchronizationStatus::CountWaiting()
{
    const QWriteLocker locker(&m_lock);
    ++m_counts.waiting;
}

void CSynchronizationStatus::CountSuccess()
{
    count(&Counts::succeeded);
}

void CSynchronizationStatus::CountFailure()
{
    count(&Counts::failed);
}

void CSynchronizationStatus::count(qint32 Counts::*outcome)
{
    const QWriteLocker locker(&m_lock);
    ++(m_counts.*outcome);
    if (m_counts.waiting > 0)
        --m_counts.waiting;
}
