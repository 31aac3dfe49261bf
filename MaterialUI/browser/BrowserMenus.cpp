// What the context menus and their keys do: the browser's part in the operations on appearances.
#include "AppearanceLibraryBrowserCtrlPrivate.h"
#include "ChooseLibraryDlg.h"
#include "ChooseTypeDlg.h"
#include "FavoriteCategoryDlg.h"
#include "ItemRoles.h"

#include <GlobalConfig.h>
#include <MaterialConstants.h>
#include <MaterialHelper.h>

#include <QKeyEvent>

namespace {

template <typename Announce>
void forEachIn(const kiv::CAppearanceLibraryPtr& library, const CAppearanceTargets& targets, const QObject& browser,
               const Announce& announce)
{
    const QPointer<const QObject> alive(&browser);
    for (const AppearanceTarget& target : targets.All()) {
        if (kiv::CAppearanceInstancePtr appearance = target.In(library))
            announce(appearance);
        if (!alive)
            return;
    }
}

}  // namespace

// ---- opening

void CAppearanceLibraryBrowserCtrl::OnShowAppearanceMenu(const QPoint& position)
{
    if (!m->isMenuAllowed)
        return;
    QTableWidget* table = m->ui.tableWidget;
    const int row = table->itemAt(position) ? table->rowAt(position.y()) : -1;
    const QString id = m->table->IdOf(row);
    if (row >= 0 && row != table->currentRow())
        table->setCurrentCell(row, NameColumn, QItemSelectionModel::NoUpdate);
    // The receiver of the announcement may have changed the table.
    const int now = m->rowOf(id);
    if (now >= 0 && table->selectionMode() == QAbstractItemView::SingleSelection)
        m->table->SelectClickedRow(now);
    m->openMenu(m->targetsAt(id), table->viewport()->mapToGlobal(position));
}

void CAppearanceLibraryBrowserCtrl::OnShowTreeMenu(const QPoint& position)
{
    const QTreeWidgetItem* item = m->ui.treeWidget->itemAt(position);
    const QPoint globalPosition = m->ui.treeWidget->viewport()->mapToGlobal(position);
    if (m->isMenuAllowed && item && item->type() == AppearanceItem) {
        m->openMenu(m->targetsAt(item->data(0, IdRole).toString()), globalPosition);
        return;
    }
    const bool canChoose = !m->provider && !m->ui.comboBox->isHidden();
    m->menus->ShowTreeMenu(canChoose, globalPosition);
}

void CAppearanceLibraryBrowserCtrl::Private::initMenus()
{
    menus = std::make_unique<CAppearanceMenus>(q);
    // A menu hides just before it tells what was chosen.
    QObject::connect(
        &menus->AppearanceMenu(), &QMenu::aboutToHide, &q, [this] { forgetTargets(); }, Qt::QueuedConnection);
}

void CAppearanceLibraryBrowserCtrl::Private::openMenu(const CAppearanceTargets& targets, const QPoint& globalPosition)
{
    remembered = targets;
    menus->SetOffer(offerFor(targets));
    menus->ShowAppearanceMenu(globalPosition);
}

void CAppearanceLibraryBrowserCtrl::Private::contextMenuByKey(QAbstractItemView& view)
{
    const QModelIndex current = view.currentIndex();
    if (current.isValid())
        view.scrollTo(current);
    const QPoint position = current.isValid() ? view.visualRect(current).center() : view.viewport()->rect().center();
    if (&view == ui.treeWidget)
        q.OnShowTreeMenu(position);
    else if (current.isValid())
        q.OnShowAppearanceMenu(position);
    else if (isMenuAllowed)
        openMenu({}, view.viewport()->mapToGlobal(position));
}

// Comes before the key is looked for among the shortcuts, which from here on are those for what is current now.
void CAppearanceLibraryBrowserCtrl::Private::prepareShortcut(const QKeyEvent& event)
{
    if (!menus->HasShortcut(QKeySequence(event.key() | int(event.modifiers() & ~Qt::KeypadModifier))))
        return;
    remembered = currentTargets();
    menus->SetOffer(isMenuAllowed ? offerFor(*remembered) : CAppearanceMenus::Offer());
    QMetaObject::invokeMethod(
        &q, [this] { forgetTargets(); }, Qt::QueuedConnection);
}

// ---- targets

void CAppearanceLibraryBrowserCtrl::Private::forgetTargets()
{
    if (!menus->AppearanceMenu().isVisible())
        remembered.reset();
}

CAppearanceTargets CAppearanceLibraryBrowserCtrl::Private::takeTargets()
{
    const CAppearanceTargets targets = remembered ? *remembered : currentTargets();
    remembered.reset();
    return targets;
}

/// All selected rows when the appearance's is one of them, else that appearance.
CAppearanceTargets CAppearanceLibraryBrowserCtrl::Private::targetsAt(const QString& id) const
{
    const QStringList selected = table->SelectedIds();
    return {library, selected.contains(id) ? selected : QStringList(id), id};
}

CAppearanceTargets CAppearanceLibraryBrowserCtrl::Private::currentTargets() const
{
    const QTreeWidgetItem* item = ui.treeWidget->hasFocus() ? ui.treeWidget->currentItem() : nullptr;
    if (item && item->type() == AppearanceItem)
        return targetsAt(item->data(0, IdRole).toString());
    const QString current = table->IdOf(ui.tableWidget->currentRow());
    const QStringList selected = table->SelectedIds();
    return {library, selected.isEmpty() ? QStringList(current) : selected, current};
}

CAppearanceMenus::Offer CAppearanceLibraryBrowserCtrl::Private::offerFor(const CAppearanceTargets& targets) const
{
    using Menus = CAppearanceMenus;
    const kiv::CAppearanceInstancePtr appearance = targets.Current().In(library);
    const bool isFavorite = isShown(FAVORITE_LIBRARY_NAME);
    const bool isProject = library && !isFavorite && !isShown(SYSTEM_LIBRARY_NAME);
    const bool isComplete = appearance && kiv::CMaterialHelper::CheckResourceComplete(appearance, manager);
    const bool isEditable = isComplete && isProject && appearance->GetEditType() >= 1;
    Menus::Offer offer;
    offer[Menus::Download] = appearance && !isComplete;
    offer[Menus::Apply] = offer[Menus::Copy] = offer[Menus::Export] = isComplete;
    offer[Menus::AddFavorite] = isComplete && !isFavorite;
    offer[Menus::TypeChange] = isEditable;
    offer[Menus::Rename] = isEditable && GMaterialUI::CGlobalConfig::isMaterialNameEditable();
    offer[Menus::Delete] = isComplete && isProject;
    offer[Menus::Remove] = appearance && isFavorite;
    offer[Menus::Import] = importTarget() && (isComplete || !appearance);
    return offer;
}

kiv::CAppearanceLibraryPtr CAppearanceLibraryBrowserCtrl::Private::importTarget() const
{
    const bool isProject = !isShown(FAVORITE_LIBRARY_NAME) && !isShown(SYSTEM_LIBRARY_NAME);
    return isImportAllowed && isProject ? library : nullptr;
}

bool CAppearanceLibraryBrowserCtrl::Private::isConfirmed(const CAppearanceTargets& targets,
                                                         const Confirmation& confirmation)
{
    const Appearances appearances = targets.AllIn(library);
    if (appearances.empty() || !confirmation)
        return !appearances.empty();
    const Confirmation ask = confirmation;
    const QPointer<CAppearanceLibraryBrowserCtrl> alive(&q);
    return ask(appearances) && alive;
}

// ---- actions

void CAppearanceLibraryBrowserCtrl::OnMenuCopyAppearance()
{
    forEachIn(m->library, m->takeTargets(), *this,
              [this](const kiv::CAppearanceInstancePtr& appearance) { emit OnCopyandAddApperance(appearance); });
}

void CAppearanceLibraryBrowserCtrl::OnMenuDeleteAppearance()
{
    const CAppearanceTargets targets = m->takeTargets();
    if (!m->isConfirmed(targets, m->confirmDelete))
        return;
    forEachIn(m->library, targets, *this,
              [this](kiv::CAppearanceInstancePtr& appearance) { emit OnDeleteApperance(appearance); });
}

void CAppearanceLibraryBrowserCtrl::OnMenuRemoveAppearance()
{
    const CAppearanceTargets targets = m->takeTargets();
    if (!m->isConfirmed(targets, m->confirmRemove))
        return;
    forEachIn(m->library, targets, *this,
              [this](kiv::CAppearanceInstancePtr& appearance) { emit OnRemoveApperance(appearance); });
}

void CAppearanceLibraryBrowserCtrl::OnMenuDownloadAppearance()
{
    if (const kiv::CAppearanceInstancePtr appearance = m->takeTargets().Current().In(m->library))
        emit OnDownloadAppearance(QString::fromLocal8Bit(appearance->GetId().c_str()));
}

void CAppearanceLibraryBrowserCtrl::OnMenuApplyAppearance()
{
    const AppearanceTarget target = m->takeTargets().Current();
    const kiv::CAppearanceInstancePtr appearance = target.In(m->library);
    if (!appearance)
        return;
    const QPointer<CAppearanceLibraryBrowserCtrl> alive(this);
    m->announce(QString::fromLocal8Bit(target.id.c_str()));
    if (alive)
        emit OnApplyAppearance(appearance);
}

void CAppearanceLibraryBrowserCtrl::OnMenuRenameAppearance()
{
    if (const kiv::CAppearanceInstancePtr appearance = m->takeTargets().Current().In(m->library))
        emit OnRenameAppearance(appearance);
}

void CAppearanceLibraryBrowserCtrl::OnMenuExportAppearances()
{
    const Appearances appearances = m->takeTargets().AllIn(m->library);
    if (!appearances.empty())
        emit OnExportAppearances(appearances);
}

void CAppearanceLibraryBrowserCtrl::OnMenuImportAppearances()
{
    emit OnImportAppearances({});
}

void CAppearanceLibraryBrowserCtrl::OnMenuAppearanceTypeChange()
{
    m->dialogTarget = m->takeTargets().Current();
    const kiv::CAppearanceInstancePtr appearance = m->dialogTarget.In(m->library);
    if (!appearance)
        return;
    m->chooseType = new CChooseTypeDlg(this);
    m->chooseType->setAttribute(Qt::WA_DeleteOnClose);
    m->chooseType->SetTypeName(QString::fromLocal8Bit(appearance->GetTemplateName().c_str()));
    connect(m->chooseType, SIGNAL(accepted()), this, SLOT(OnMenuAppearanceTypeAccepted()));
    m->chooseType->open();
}

void CAppearanceLibraryBrowserCtrl::OnMenuAppearanceTypeAccepted()
{
    kiv::CAppearanceInstancePtr appearance = std::exchange(m->dialogTarget, {}).In(m->library);
    if (appearance && m->chooseType)
        emit OnAppearanceTypeChanged(appearance, m->chooseType->GetTypeName().toLocal8Bit().toStdString());
}

void CAppearanceLibraryBrowserCtrl::OnMenuAddFavoriteAppearance()
{
    const AppearanceTarget target = m->takeTargets().Current();
    if (!target.In(m->library))
        return;
    // The first level of a category is a type.
    const QString category = QString::fromLocal8Bit(target.appearance->GetCategory().c_str()).section('/', 0, 0);
    auto* dialog = new CFavoriteCategoryDlg(category, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog, target] {
        if (const kiv::CAppearanceInstancePtr appearance = target.In(m->library))
            emit OnAddFavoriteAppearance(appearance, dialog->GetSelectedType().toLocal8Bit().toStdString());
    });
    dialog->open();
}

void CAppearanceLibraryBrowserCtrl::OnMenuChooseLibrary()
{
    m->chooseLibrary = new CChooseLibraryDlg(m->manager, this);
    m->chooseLibrary->setAttribute(Qt::WA_DeleteOnClose);
    connect(m->chooseLibrary, SIGNAL(accepted()), this, SLOT(OnChooseLibrary()));
    m->chooseLibrary->open();
}

// An entry of the combo box is the owner's to show, as when it is chosen there; another library is shown here.
void CAppearanceLibraryBrowserCtrl::OnChooseLibrary()
{
    const kiv::CAppearanceLibraryPtr library =
        m->chooseLibrary ? m->findLibrary(m->chooseLibrary->GetLibraryName()) : nullptr;
    if (!library)
        return;
    const kiv::String name = library->GetName();
    if (m->ui.comboBox->findData(QString::fromLocal8Bit(name.c_str())) >= 0) {
        emit OnMaterialLibraryChange(name);
    } else {
        m->ui.treeWidget->clear();
        AddLibrary(library);
    }
}

kiv::CAppearanceLibraryPtr CAppearanceLibraryBrowserCtrl::Private::findLibrary(const kiv::String& name) const
{
    for (auto it = manager.beginLibrary(); it != manager.endLibrary(); ++it) {
        if (it->first == name)
            return it->second;
    }
    return nullptr;
}

// ---- dragging and dropping

void CAppearanceLibraryBrowserCtrl::Private::initDragging()
{
    const auto entry = [this](const QAbstractItemView& view, const QPoint& position) {
        return entryAt(view, position);
    };
    auto* drag = new CAppearanceDrag(manager, entry, &q);
    auto* drop = new CAppearanceDrop(
        manager, [this] { return importTarget(); }, &q);
    for (QAbstractItemView* view : views()) {
        drag->Watch(*view);
        drop->Watch(*view);
    }
    QObject::connect(drag, &CAppearanceDrag::Finished, &q, [this] { isPressed = false; });
    QObject::connect(drop, &CAppearanceDrop::FilesDropped, &q, &CAppearanceLibraryBrowserCtrl::OnImportAppearances);
    QObject::connect(drop, &CAppearanceDrop::AppearanceDropped, &q,
                     &CAppearanceLibraryBrowserCtrl::OnCopyandAddApperance);
}

CAppearanceEntryPtr CAppearanceLibraryBrowserCtrl::Private::entryAt(const QAbstractItemView& view,
                                                                    const QPoint& position) const
{
    QTreeWidgetItem* item = nullptr;
    if (&view == ui.treeWidget)
        item = ui.treeWidget->itemAt(position);
    else
        item = findTreeItem(table->IdOf(ui.tableWidget->rowAt(position.y())));
    if (!item || item->type() != AppearanceItem)
        return nullptr;
    const CAppearanceEntryPtr& entry = static_cast<CAppearanceTreeItem*>(item)->Entry();
    return find(entry->Id()) == entry->Appearance() ? entry : nullptr;
}
