#include "SynchronizationStatus.h"

void CSynchronizationStatus::Set(const Counts& counts)
{
    const QWriteLocker locker(&m_lock);
    m_counts = counts;
}

CSynchronizationStatus::Counts CSynchronizationStatus::Get() const
{
    const QReadLocker locker(&m_lock);
    return {m_counts.waiting + m_removals, m_counts.succeeded, m_counts.failed};
}

qint32 CSynchronizationStatus::GetWaiting() const
{
    const QReadLocker locker(&m_lock);
    return m_counts.waiting;
}

bool CSynchronizationStatus::IsIdle() const
{
    return Get().waiting == 0;
}

void CSynchronizationStatus::CountRemoval()
{
    const QWriteLocker locker(&m_lock);
    ++m_removals;
}

void CSynchronizationStatus::CountRemovalEnd(bool isSuccess)
{
    const QWriteLocker locker(&m_lock);
    --m_removals;
    ++(isSuccess ? m_counts.succeeded : m_counts.failed);
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
