#pragma once

#include <QMap>
#include <QReadWriteLock>
#include <QString>

/// Numbers by key, for any thread.
class CThreadSafeKeyIntMap {
public:
    /// -1 for a key that is not there.
    int Value(const QString& key) const;
    void SetValue(const QString& key, int value);
    /// The value, which becomes 0; a key that is not there stays so and gives -1.
    int Take(const QString& key);

private:
    mutable QReadWriteLock m_lock;
    QMap<QString, int> m_values;
};
