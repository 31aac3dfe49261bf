#include "AppearanceDrop.h"

#include "AppearanceMime.h"

#include <MaterialHelper.h>

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

namespace {

bool isImportable(const QString& file)
{
    return file.endsWith(QLatin1String(".ggm"), Qt::CaseInsensitive) ||
           file.endsWith(QLatin1String(".json"), Qt::CaseInsensitive);
}

/// The files of the data; none when one of them is of another kind, since it would be left out unseen.
QStringList filesOf(const QMimeData& data)
{
    QStringList files;
    for (const QUrl& url : data.urls()) {
        if (!url.isLocalFile() || !isImportable(url.toLocalFile()))
            return {};
        files.append(url.toLocalFile());
    }
    return files;
}

}  // namespace

CAppearanceDrop::CAppearanceDrop(kiv::CAppearanceLibraryManager& manager, Target target, QObject* parent)
    : QObject(parent), m_manager(manager), m_target(std::move(target))
{
}

void CAppearanceDrop::Watch(QAbstractItemView& view)
{
    view.viewport()->setAcceptDrops(true);
    view.viewport()->installEventFilter(this);
    m_views.append(&view);
}

bool CAppearanceDrop::eventFilter(QObject*, QEvent* event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        handle(static_cast<QDropEvent&>(*event), event->type() == QEvent::Drop);
        return true;
    default:
        return false;
    }
}

void CAppearanceDrop::handle(QDropEvent& event, bool isDrop)
{
    event.ignore();
    const kiv::CAppearanceLibraryPtr target = m_target();
    if (!target || !(event.possibleActions() & Qt::CopyAction))
        return;
    const QStringList files = filesOf(*event.mimeData());
    const kiv::CAppearanceInstancePtr appearance = files.isEmpty() ? find(event, *target) : nullptr;
    if (files.isEmpty() && !appearance)
        return;
    event.setDropAction(Qt::CopyAction);
    event.accept();
    if (isDrop)
        announce(files, appearance);
}

bool CAppearanceDrop::isOwn(const QObject* source) const
{
    return std::any_of(m_views.begin(), m_views.end(), [&](const QObject* view) { return view == source; });
}

kiv::CAppearanceInstancePtr CAppearanceDrop::find(const QDropEvent& event, const kiv::CAppearanceLibrary& target) const
{
    if (isOwn(event.source()) || !AppearanceMime::IsIn(event.mimeData()))
        return nullptr;
    const kiv::String id = AppearanceMime::IdOf(event.mimeData());
    for (auto it = m_manager.beginLibrary(); it != m_manager.endLibrary(); ++it) {
        const kiv::CAppearanceInstancePtr found = it->second.get() == &target ? nullptr : it->second->FindInstance(id);
        if (found)
            return kiv::CMaterialHelper::CheckResourceComplete(found, m_manager) ? found : nullptr;
    }
    return nullptr;
}

void CAppearanceDrop::announce(const QStringList& files, const kiv::CAppearanceInstancePtr& appearance)
{
    const auto tell = [this, files, appearance] {
        if (appearance)
            emit AppearanceDropped(appearance);
        else
            emit FilesDropped(files);
    };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}
