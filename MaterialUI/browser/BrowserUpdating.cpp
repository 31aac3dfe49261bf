// How the browser follows a library that changes.
#include "AppearanceLibraryBrowserCtrlPrivate.h"
#include "ImageDelegate.h"
#include "ItemRoles.h"

#include <MaterialConstants.h>

#include <QScrollBar>

// ---- one appearance

void CAppearanceLibraryBrowserCtrl::UpdateLibrary(kiv::CAppearanceInstancePtr appearance, bool added)
{
    if (!appearance || !m->library)
        return;
    const Private::Silence silence(*m);
    const QString id = QString::fromLocal8Bit(appearance->GetId().c_str());
    CAppearanceTreeItem* item = m->findTreeItem(id);
    if (added && m->find(id))
        m->ExpandTabelWidget(appearance, item);
    else if (item)
        m->ReduceTabelWidget(*item, id);
    if (m->selectedId == id && !(m->find(id) && m->keepRow(id)))
        m->selectedId.clear();
}

void CAppearanceLibraryBrowserCtrl::OnAddAppearance(const kiv::CAppearanceInstancePtr& appearance)
{
    UpdateLibrary(appearance, true);
    SelectAppearance(appearance);
}

void CAppearanceLibraryBrowserCtrl::OnAppearancePropertyChanged(const kiv::CAppearanceInstancePtr& appearance,
                                                                const std::string& key)
{
    if (!appearance || !m->library || m->library->FindInstance(appearance->GetId()) != appearance)
        return;
    CAppearanceTreeItem* item = m->findTreeItem(QString::fromLocal8Bit(appearance->GetId().c_str()));
    if (!item || item->Entry()->Appearance() != appearance)
        return;
    if (key == "category")
        UpdateLibrary(appearance, true);
    else
        m->refreshEntry(*item);
}

bool CAppearanceLibraryBrowserCtrl::ModifyTableWidgetItemCloud(kiv::CAppearanceInstancePtr appearance)
{
    const int row = appearance ? m->rowOf(QString::fromLocal8Bit(appearance->GetId().c_str())) : -1;
    if (row >= 0)
        m->table->SetInCloud(row, appearance->GetCloudFlag());
    return row >= 0;
}

bool CAppearanceLibraryBrowserCtrl::SetTableWidgetIcon(kiv::CAppearanceInstancePtr appearance)
{
    const QString id = appearance ? QString::fromLocal8Bit(appearance->GetId().c_str()) : QString();
    if (m->rowOf(id) < 0)
        return false;
    m->refreshEntry(*m->findTreeItem(id));
    return true;
}

void CAppearanceLibraryBrowserCtrl::Private::ExpandTabelWidget(const kiv::CAppearanceInstancePtr& appearance,
                                                               CAppearanceTreeItem* old)
{
    CLibraryTreeItem* item = libraryItem();
    if (!item)
        return;
    const auto entry = std::make_shared<CAppearanceEntry>(manager, appearance->GetId(), appearance);
    if (old) {
        exchange(*item, *old, entry);
    } else {
        tree->AddAppearance(*item, entry);
        item->Entries().push_back(entry);
        if (entry->IsBelow(path))
            table->Insert(entry);
    }
    ui.treeWidget->viewport()->update();
}

// Rows and items stay where they are as far as they can, and with them what is current and selected.
void CAppearanceLibraryBrowserCtrl::Private::exchange(CLibraryTreeItem& item, CAppearanceTreeItem& old,
                                                      const CAppearanceEntryPtr& entry)
{
    const CAppearanceEntryPtr oldEntry = old.Entry();
    const int row = table->RowOf(*oldEntry);
    const bool wasCurrent = &old == ui.treeWidget->currentItem();
    std::replace(item.Entries().begin(), item.Entries().end(), oldEntry, entry);
    CAppearanceTreeItem* again = tree->Exchange(item, old, entry);
    if (row >= 0 && entry->IsBelow(path))
        table->Replace(row, entry);
    else if (row >= 0)
        table->Remove(row);
    else if (entry->IsBelow(path))
        table->Insert(entry);
    if (again == &old)
        return;
    removeTreeItem(item, old);
    if (wasCurrent)
        ui.treeWidget->setCurrentItem(again);
}

// What is current already stays as it is, since other rows may be selected beside it.
bool CAppearanceLibraryBrowserCtrl::Private::keepRow(const QString& id)
{
    const int row = rowOf(id);
    return row >= 0 && (row == ui.tableWidget->currentRow() || selectRow(id));
}

void CAppearanceLibraryBrowserCtrl::Private::ReduceTabelWidget(CAppearanceTreeItem& item, const QString& id)
{
    CLibraryTreeItem* owner = CLibraryTree::LibraryOf(&item);
    const int row = table->RowOf(*item.Entry());
    const bool wasCurrent = row >= 0 && row == ui.tableWidget->currentRow();
    if (row >= 0)
        table->Remove(row);
    CAppearanceEntries& entries = owner->Entries();
    entries.erase(std::find(entries.begin(), entries.end(), item.Entry()));
    owner->Forget(id);
    removeTreeItem(*owner, item);
    if (wasCurrent)
        table->FocusRow(row);
}

void CAppearanceLibraryBrowserCtrl::Private::removeTreeItem(CLibraryTreeItem& owner, CAppearanceTreeItem& item)
{
    QTreeWidgetItem* parent = item.parent();
    delete &item;
    removeEmptyCategories(parent);
    QTreeWidgetItem* shown = CLibraryTree::NearestCategory(owner, path);
    const QString shownPath = shown->type() == CategoryItem ? shown->data(0, IdRole).toString() : QString();
    if (shownPath == path)
        return;
    ui.treeWidget->setCurrentItem(shown);
    ExpandLibrary(*shown, shownPath);
}

void CAppearanceLibraryBrowserCtrl::Private::removeEmptyCategories(QTreeWidgetItem* category)
{
    while (category->type() == CategoryItem && category->childCount() == 0 && !isShown(SYSTEM_LIBRARY_NAME)) {
        QTreeWidgetItem* parent = category->parent();
        delete category;
        category = parent;
    }
}

void CAppearanceLibraryBrowserCtrl::Private::refreshEntry(CAppearanceTreeItem& item)
{
    item.Entry()->Refresh();
    CLibraryTree::LibraryOf(&item)->Index().Exclude(*item.Entry());
    const QString texture = item.Entry()->Texture().toString();
    if (!texture.isEmpty())
        ImageDelegate::Shared().Thumbnails().Recheck(texture);
    const int row = table->RowOf(*item.Entry());
    if (row >= 0)
        table->UpdateRow(row);
    ui.treeWidget->viewport()->update();
}

// ---- the library

void CAppearanceLibraryBrowserCtrl::UpdateLibrary(const std::shared_ptr<kiv::CAppearanceLibrary>& library)
{
    if (library)
        m->rebuild(library);
}

void CAppearanceLibraryBrowserCtrl::UpdateFavoriteLibrary(const std::shared_ptr<kiv::CAppearanceLibrary>& library)
{
    if (m->isShown(FAVORITE_LIBRARY_NAME))
        UpdateLibrary(library);
}

void CAppearanceLibraryBrowserCtrl::Private::rebuild(const kiv::CAppearanceLibraryPtr& changed)
{
    CLibraryTreeItem* old = tree->FindLibrary(changed->GetName());
    if (!old || !isShown(changed->GetName())) {
        ui.treeWidget->clear();
        showLibrary(changed);
        return;
    }
    const Silence silence(*this);
    const CBrowserState state = captureState();
    const int position = ui.treeWidget->indexOfTopLevelItem(old);
    delete old;
    addLibrary(changed, position);
    restoreState(state);
}

CBrowserState CAppearanceLibraryBrowserCtrl::Private::captureState() const
{
    CBrowserState state;
    state.path = path;
    QTreeWidgetItem* current = ui.treeWidget->currentItem();
    if (current && current->type() == AppearanceItem) {
        state.treeAppearance = current->data(0, IdRole).toString();
        current = current->parent();
    }
    if (current && current->type() == CategoryItem)
        state.treeCategory = current->data(0, IdRole).toString();
    state.selectedId = selectedId;
    state.selectedRows = table->SelectedIds();
    state.ReadCategories(*libraryItem());
    state.treeScroll = ui.treeWidget->verticalScrollBar()->value();
    state.tableScroll = ui.tableWidget->verticalScrollBar()->value();
    return state;
}

void CAppearanceLibraryBrowserCtrl::Private::restoreState(const CBrowserState& state)
{
    CLibraryTreeItem* item = libraryItem();
    restoreTree(*item, state);
    QTreeWidgetItem* shown = CLibraryTree::NearestCategory(*item, state.path);
    ExpandLibrary(*shown, shown->type() == CategoryItem ? shown->data(0, IdRole).toString() : QString());
    restoreTable(state);
}

void CAppearanceLibraryBrowserCtrl::Private::restoreTree(CLibraryTreeItem& item, const CBrowserState& state)
{
    // The system library's categories stay although they are empty.
    if (isShown(SYSTEM_LIBRARY_NAME)) {
        for (const QString& category : state.categories)
            tree->AddCategory(item, category);
    }
    state.WriteCategories(item);
    QTreeWidgetItem* current = CLibraryTree::NearestCategory(item, state.treeCategory);
    if (!state.treeAppearance.isEmpty()) {
        if (QTreeWidgetItem* appearance = item.Find(state.treeAppearance))
            current = appearance;
    }
    ui.treeWidget->setCurrentItem(current);
    ui.treeWidget->doItemsLayout();
    ui.treeWidget->verticalScrollBar()->setValue(state.treeScroll);
}

void CAppearanceLibraryBrowserCtrl::Private::restoreTable(const CBrowserState& state)
{
    selectedId = find(state.selectedId) ? state.selectedId : QString();
    const int row = selectedId.isEmpty() ? -1 : rowOf(selectedId);
    if (row >= 0)
        table->SetCurrentRow(row);
    table->SelectIds(state.selectedRows);
    ui.tableWidget->doItemsLayout();
    ui.tableWidget->verticalScrollBar()->setValue(state.tableScroll);
}
