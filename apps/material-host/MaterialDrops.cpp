#include "MaterialDrops.h"

#include <AppearanceMime.h>
#include <MaterialConstants.h>

#include <kiv/AppearanceParser.h>

#include <QDragEnterEvent>
#include <QMimeData>
#include <QWidget>

using kiv::CAppearanceInstancePtr;

namespace {

/// The first of the id, or, where there is a document, the first that it is the document of: appearances of different
/// libraries may have the same id.
CAppearanceInstancePtr findInLibraries(const kiv::String& id, const kiv::String& document,
                                       const kiv::CAppearanceLibraryManager& manager)
{
    const kiv::CAppearanceParser parser(manager);
    const auto isMeant = [&](const CAppearanceInstancePtr& found) {
        return document.empty() || parser.AppearanceToString(found) == document;
    };
    for (const auto& library : {manager.FindUserAppearanceLibrary(CUSTOMER_LIBRARY_NAME), manager.GetSystemLibrary(),
                                manager.FindUserAppearanceLibrary(FAVORITE_LIBRARY_NAME)})
        if (const CAppearanceInstancePtr found = library ? library->FindInstance(id) : nullptr)
            if (isMeant(found))
                return found;
    return {};
}

}  // namespace

MaterialDrops::MaterialDrops(QWidget& view, kiv::CMaterialLibrary& library, ElementAt elementAt)
    : QObject(&view), m_view(view), m_manager(*library.GetMaterialManager()), m_elementAt(std::move(elementAt))
{
    view.installEventFilter(this);
}

void MaterialDrops::setEnabled(bool enabled)
{
    m_view.setAcceptDrops(enabled);
}

CAppearanceInstancePtr MaterialDrops::materialOf(const QMimeData& data, kiv::CAppearanceLibraryManager& manager)
{
    const kiv::String document = AppearanceMime::DocumentOf(&data);
    if (const CAppearanceInstancePtr known = findInLibraries(AppearanceMime::IdOf(&data), document, manager))
        return known;
    return document.empty() ? nullptr : kiv::CAppearanceParser(manager).AppearanceFromString(document);
}

bool MaterialDrops::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
        m_material = materialOf(*static_cast<QDragEnterEvent*>(event)->mimeData(), m_manager);
        // Where nothing is accepted at first no more would be told of the drag.
        event->setAccepted(bool(m_material));
        return true;
    case QEvent::DragMove:
        hover(*static_cast<QDropEvent*>(event));
        return true;
    case QEvent::DragLeave:
        leave();
        return true;
    case QEvent::Drop:
        drop(*static_cast<QDropEvent*>(event));
        return true;
    default:
        return QObject::eventFilter(watched, event);
    }
}

void MaterialDrops::hover(QDropEvent& event)
{
    const QString elementId = m_material ? m_elementAt(event.pos()) : QString();
    event.setDropAction(Qt::CopyAction);
    event.setAccepted(!elementId.isEmpty());
    emit hovered(elementId, event.pos());
}

void MaterialDrops::leave()
{
    m_material.reset();
    emit hovered({}, {});
}

void MaterialDrops::drop(QDropEvent& event)
{
    hover(event);
    const CAppearanceInstancePtr material = m_material;
    const QString elementId = event.isAccepted() ? m_elementAt(event.pos()) : QString();
    leave();
    if (!elementId.isEmpty())
        emit dropped(elementId, material, event.source());
}
