#include "CloudRemovals.h"

#include <kiv/system/StoredPath.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QMutexLocker>

#include <utility>

namespace {

Q_LOGGING_CATEGORY(removals, "materialui.cloud.removals")

constexpr qint64 MaxBytes = 64 << 20;

// The loader of the favourites takes every ".json" for one of them.
const char* const FileName = "/removed-from-cloud.list";

}  // namespace

CCloudRemovals::~CCloudRemovals()
{
    write();
}

void CCloudRemovals::SetFolder(const QString& favorites)
{
    const QMutexLocker locker(&m_mutex);
    const QString file = favorites.isEmpty() ? QString() : favorites + FileName;
    if (file == m_file)
        return;
    write();
    m_file = file;
    m_textures.clear();
    m_begun.clear();
    read();
}

void CCloudRemovals::read()
{
    QByteArray bytes;
    QString reason;
    if (!kiv::system::ReadWholeFile(m_file, MaxBytes, bytes, reason))
        return;
    const QJsonObject removed = QJsonDocument::fromJson(bytes).object();
    for (auto entry = removed.begin(); entry != removed.end(); ++entry) {
        QStringList& names = m_textures[entry.key()];
        for (const auto& name : entry.value().toArray())
            names.append(name.toString());
    }
}

// Thousands may be removed at once.
void CCloudRemovals::change()
{
    if (std::exchange(m_isChanged, true))
        return;
    QMetaObject::invokeMethod(
        &m_turn, [this] { flush(); }, Qt::QueuedConnection);
}

void CCloudRemovals::flush()
{
    const QMutexLocker locker(&m_mutex);
    write();
}

void CCloudRemovals::write()
{
    if (!std::exchange(m_isChanged, false))
        return;
    QJsonObject removed;
    for (auto entry = m_textures.begin(); entry != m_textures.end(); ++entry)
        removed.insert(entry.key(), QJsonArray::fromStringList(entry.value()));
    QString reason;
    if (!kiv::system::WriteWholeFile(m_file, QJsonDocument(removed).toJson(), reason))
        qCWarning(removals).noquote() << "What was removed will come back from the cloud:" << reason;
}

void CCloudRemovals::Add(const QString& id, const QStringList& textureNames)
{
    const QMutexLocker locker(&m_mutex);
    if (m_file.isEmpty())
        return;
    m_textures.insert(id, textureNames);
    m_begun.remove(id);
    change();
}

void CCloudRemovals::Forget(const QString& id)
{
    const QMutexLocker locker(&m_mutex);
    m_begun.remove(id);
    if (m_textures.remove(id) > 0)
        change();
}

bool CCloudRemovals::Contains(const QString& id) const
{
    const QMutexLocker locker(&m_mutex);
    return m_textures.contains(id);
}

CCloudRemovals::Removal CCloudRemovals::Begin()
{
    const QMutexLocker locker(&m_mutex);
    write();
    for (auto entry = m_textures.begin(); entry != m_textures.end(); ++entry) {
        if (m_begun.contains(entry.key()))
            continue;
        m_begun.insert(entry.key());
        return {entry.key(), entry.value()};
    }
    return {};
}

bool CCloudRemovals::HasFresh() const
{
    const QMutexLocker locker(&m_mutex);
    return m_begun.size() < m_textures.size();
}

void CCloudRemovals::Restart()
{
    const QMutexLocker locker(&m_mutex);
    m_begun.clear();
}
