#include "ThumbnailStore.h"

#include <QRunnable>

#include <functional>

namespace {

constexpr qint64 RecheckMs = 3000;
constexpr int EntryBytes = 256;
constexpr int MaxThreads = 2;

}  // namespace

bool CThumbnailStore::Asker::isVisible() const
{
    if (isElsewhere)
        return true;
    return view && view->isVisible() && index.isValid() && view->visualRect(index).intersects(view->viewport()->rect());
}

CThumbnailStore::CThumbnailStore(QObject* parent) : QObject(parent)
{
    // A decoder may need 256 MB for one picture, so not all processors at once.
    m_pool.setMaxThreadCount(MaxThreads);
}

CThumbnailStore::~CThumbnailStore()
{
    m_pool.clear();
    m_pool.waitForDone();
}

std::optional<QPixmap> CThumbnailStore::Find(const ThumbnailKey& key, QAbstractItemView* view, const QModelIndex& index)
{
    const Entry* entry = m_cache.object(key);
    if (!entry || !entry->checked.isValid() || entry->checked.hasExpired(RecheckMs))
        ask(key, view, index);
    return entry ? std::optional<QPixmap>(entry->pixmap) : std::nullopt;
}

void CThumbnailStore::Recheck(const QString& file)
{
    for (const ThumbnailKey& key : m_cache.keys()) {
        if (key.file == file)
            m_cache.object(key)->checked.invalidate();
    }
}

void CThumbnailStore::ask(const ThumbnailKey& key, QAbstractItemView* view, const QModelIndex& index)
{
    Request& request = m_requests[key];
    request.serial = ++m_serial;
    const bool known = std::any_of(request.askers.cbegin(), request.askers.cend(),
                                   [&](const Asker& asker) { return asker.view == view && asker.index == index; });
    if (!known)
        request.askers.append({view, index, view == nullptr});
    startNext();
}

void CThumbnailStore::startNext()
{
    while (m_running < MaxThreads) {
        dropInvisible();
        const auto next = lastAsked();
        if (next == m_requests.end())
            return;
        next->isRunning = true;
        start(next.key());
    }
}

void CThumbnailStore::dropInvisible()
{
    for (auto it = m_requests.begin(); it != m_requests.end();) {
        const bool wanted = it->isRunning || std::any_of(it->askers.cbegin(), it->askers.cend(),
                                                         [](const Asker& asker) { return asker.isVisible(); });
        it = wanted ? std::next(it) : m_requests.erase(it);
    }
}

QHash<ThumbnailKey, CThumbnailStore::Request>::iterator CThumbnailStore::lastAsked()
{
    auto last = m_requests.end();
    for (auto it = m_requests.begin(); it != m_requests.end(); ++it) {
        if (!it->isRunning && (last == m_requests.end() || it->serial > last->serial))
            last = it;
    }
    return last;
}

void CThumbnailStore::start(const ThumbnailKey& key)
{
    const Entry* entry = m_cache.object(key);
    const std::optional<FileStamp> known = entry ? std::optional<FileStamp>(entry->stamp) : std::nullopt;
    ++m_running;
    m_pool.start(QRunnable::create([this, key, known] {
        Result result{StampOf(key.file), true, {}};
        result.isChanged = !known || !(*known == result.stamp);
        if (result.isChanged)
            result.image = LoadThumbnail(key);
        QMetaObject::invokeMethod(
            this, [this, key, result] { finish(key, result); }, Qt::QueuedConnection);
    }));
}

void CThumbnailStore::finish(const ThumbnailKey& key, const Result& result)
{
    --m_running;
    const Request request = m_requests.take(key);
    store(key, result);
    if (result.isChanged) {
        for (const Asker& asker : request.askers) {
            if (asker.view && asker.index.isValid())
                asker.view->update(asker.index);
        }
    }
    startNext();
}

void CThumbnailStore::store(const ThumbnailKey& key, const Result& result)
{
    Entry* entry = m_cache.object(key);
    if (!result.isChanged && entry) {
        entry->checked.start();
        return;
    }
    entry = new Entry{QPixmap::fromImage(result.image), result.stamp, {}};
    entry->checked.start();
    m_cache.insert(key, entry, EntryBytes + int(result.image.sizeInBytes()));
}
