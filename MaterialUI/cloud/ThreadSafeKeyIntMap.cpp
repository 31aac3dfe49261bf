#include "ThreadSafeKeyIntMap.h"

#include <utility>

int CThreadSafeKeyIntMap::Value(const QString& key) const
{
    const QReadLocker locker(&m_lock);
    return m_values.value(key, -1);
}

void CThreadSafeKeyIntMap::SetValue(const QString& key, int value)
{
    const QWriteLocker locker(&m_lock);
    m_values.insert(key, value);
}

int CThreadSafeKeyIntMap::Take(const QString& key)
{
    const QWriteLocker locker(&m_lock);
    const auto found = m_values.find(key);
    return found == m_values.end() ? -1 : std::exchange(*found, 0);
}
