#include "DownloadInformation.h"

void CDownloadInformation::Reset()
{
    const QWriteLocker locker(&m_lock);
    m_counts = {};
}

void CDownloadInformation::CountRequest()
{
    const QWriteLocker locker(&m_lock);
    ++m_counts.requested;
}

void CDownloadInformation::CountEnd()
{
    const QWriteLocker locker(&m_lock);
    ++m_counts.ended;
}

CDownloadInformation::Counts CDownloadInformation::Get() const
{
    const QReadLocker locker(&m_lock);
    return m_counts;
}
