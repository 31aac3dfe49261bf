#include "AppearanceLibraryBrowserCtrl.h"

#include "AppearanceLibraryBrowserCtrlPrivate.h"
#include "ChooseLibraryDlg.h"
#include "ChooseTypeDlg.h"
#include "FavoriteCategoryDlg.h"
#include "ImageDelegate.h"
#include "ItemRoles.h"

#include <MaterialConstants.h>

CAppearanceLibraryBrowserCtrl::CAppearanceLibraryBrowserCtrl(kiv::CAppearanceLibraryManager& manager, QWidget* parent,
                                                             AppearanceLibraryProvider* provider, bool cloudEnabled)
    : QWidget(parent), m(std::make_unique<Private>(*this, manager, provider, cloudEnabled))
{
    m->initViews();
    m->connectViews();
    m->initButtons();
    m->menus = std::make_unique<CAppearanceMenus>(*this);
    m->initComboBox();
    m->initTree();
}

// The views outlive the private part by a little and may change their current items as they go.
CAppearanceLibraryBrowserCtrl::~CAppearanceLibraryBrowserCtrl()
{
    for (QAbstractItemView* view :
         {static_cast<QAbstractItemView*>(m->ui.treeWidget), static_cast<QAbstractItemView*>(m->ui.tableWidget)}) {
        view->disconnect(this);
        view->removeEventFilter(this);
        view->viewport()->removeEventFilter(this);
    }
}

// ---- libraries

void CAppearanceLibraryBrowserCtrl::AddLibrary(const std::shared_ptr<kiv::CAppearanceLibrary>& library)
{
    if (library)
        m->showLibrary(library);
}

void CAppearanceLibraryBrowserCtrl::AddIndex(const std::shared_ptr<kiv::CAppearanceLibrary>& library)
{
    AddLibrary(library);
}

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

void CAppearanceLibraryBrowserCtrl::UpdateLibrary(kiv::CAppearanceInstancePtr appearance, bool added)
{
    if (!appearance || !m->library)
        return;
    const Private::Silence silence(*m);
    const QString id = QString::fromLocal8Bit(appearance->GetId().c_str());
    CAppearanceTreeItem* old = m->findTreeItem(id);
    const bool wasCurrent = old && old == m->ui.treeWidget->currentItem();
    if (old)
        m->ReduceTabelWidget(*old, id);
    if (added && m->find(id))
        m->ExpandTabelWidget(appearance);
    if (CAppearanceTreeItem* again = wasCurrent ? m->findTreeItem(id) : nullptr)
        m->ui.treeWidget->setCurrentItem(again);
    if (m->selectedId == id && !(m->find(id) && m->selectRow(id)))
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
    const QString id = appearance ? QString::fromLocal8Bit(appearance->GetId().c_str()) : QString();
    const int row = m->table->RowOf(id);
    if (row < 0)
        return false;
    m->table->SetInCloud(row, appearance->GetCloudFlag());
    return true;
}

bool CAppearanceLibraryBrowserCtrl::SetTableWidgetIcon(kiv::CAppearanceInstancePtr appearance)
{
    const QString id = appearance ? QString::fromLocal8Bit(appearance->GetId().c_str()) : QString();
    CAppearanceTreeItem* item = m->table->RowOf(id) < 0 ? nullptr : m->findTreeItem(id);
    if (item)
        m->refreshEntry(*item);
    return item != nullptr;
}

// ---- selection

void CAppearanceLibraryBrowserCtrl::SelectDefault()
{
    constexpr int row = 1;
    if (!m->table->IdOf(row).isEmpty())
        m->selectRow(m->table->IdOf(row));
    if (QTreeWidgetItem* second = m->ui.treeWidget->topLevelItem(1)) {
        const Private::Silence silence(*m);
        m->ui.treeWidget->setCurrentItem(second);
        if (second->type() != AppearanceItem)
            m->show(*second);
    }
    const QString id = m->table->IdOf(row);
    if (!id.isEmpty() && m->selectRow(id))
        m->announce(id);
}

void CAppearanceLibraryBrowserCtrl::SelectAppearance(const kiv::CAppearanceInstancePtr& appearance)
{
    CAppearanceTreeItem* item =
        appearance ? m->findTreeItem(QString::fromLocal8Bit(appearance->GetId().c_str())) : nullptr;
    if (!item)
        return;
    if (!item->Entry()->IsBelow(m->path)) {
        const Private::Silence silence(*m);
        m->ui.treeWidget->setCurrentItem(item->parent());
    }
    m->selectAppearanceItem(*item);
}

void CAppearanceLibraryBrowserCtrl::SelectTableItem(QString id)
{
    if (m->selectRow(id))
        m->announce(id);
}

void CAppearanceLibraryBrowserCtrl::SelectTreeItem(QString name)
{
    if (QTreeWidgetItem* item = m->tree->FindItem(name))
        m->ui.treeWidget->setCurrentItem(item);
}

QString CAppearanceLibraryBrowserCtrl::GetCurSel() const
{
    return m->selectedId;
}

kiv::CAppearanceInstancePtr CAppearanceLibraryBrowserCtrl::GetCurrentApperance() const
{
    return m->find(m->selectedId);
}

void CAppearanceLibraryBrowserCtrl::currentItemChanged(QTreeWidgetItem* current, QTreeWidgetItem*)
{
    if (m->silent == 0 && current)
        m->show(*current);
}

void CAppearanceLibraryBrowserCtrl::currentItemChanged(QTreeWidgetItem* clicked, int)
{
    if (!clicked)
        return;
    const QString id = clicked->data(0, IdRole).toString();
    const bool isAppearance = clicked->type() == AppearanceItem;
    if (isAppearance ? !m->isAnnounced(id) : m->path != (clicked->type() == CategoryItem ? id : QString()))
        m->show(*clicked);
    m->isPressed = false;
}

void CAppearanceLibraryBrowserCtrl::currentItemChanged(QTableWidgetItem* current, QTableWidgetItem* previous)
{
    if (m->silent > 0 || !current || current == previous)
        return;
    if (current->column() == PictureColumn) {
        // Typing a name looks in the current column.
        const Private::Silence silence(*m);
        m->ui.tableWidget->setCurrentCell(current->row(), NameColumn, QItemSelectionModel::NoUpdate);
    }
    if (!previous || previous->row() != current->row())
        m->announce(m->table->IdOf(current->row()));
}

void CAppearanceLibraryBrowserCtrl::OnSelectItem(QTableWidgetItem* item)
{
    if (!item)
        return;
    if (item->column() == PictureColumn)
        m->table->SelectClickedRow(item->row());
    const QString id = m->table->IdOf(item->row());
    if (!m->isAnnounced(id))
        m->announce(id);
    m->isPressed = false;
}

void CAppearanceLibraryBrowserCtrl::SetTableWidgetSelectMode()
{
    const bool isFavorite = m->library && m->library->GetId() == FAVORITE_LIBRARY_NAME;
    m->ui.tableWidget->setSelectionMode(isFavorite ? QAbstractItemView::MultiSelection
                                                   : QAbstractItemView::SingleSelection);
}

// ---- search and sort

void CAppearanceLibraryBrowserCtrl::SetSearchKeyWord(QString keyword)
{
    onSearchKeyWord(keyword);
}

void CAppearanceLibraryBrowserCtrl::onSearchKeyWord(QString keyword)
{
    m->keyword = keyword;
    m->search(nullptr);
}

void CAppearanceLibraryBrowserCtrl::onTableWidgetSort(int column)
{
    const Private::Silence silence(*m);
    m->table->FlipSort(column);
}

// ---- what is shown

std::shared_ptr<kiv::CAppearanceLibrary> CAppearanceLibraryBrowserCtrl::GetCurrentLibrary() const
{
    return m->library;
}

QTreeWidgetItem* CAppearanceLibraryBrowserCtrl::getCurrentTreeItem() const
{
    return m->ui.treeWidget->currentItem();
}

QTreeWidget* CAppearanceLibraryBrowserCtrl::GetTreeWidget() const
{
    return m->ui.treeWidget;
}

QTableWidget* CAppearanceLibraryBrowserCtrl::GetTableWidget() const
{
    return m->ui.tableWidget;
}

AppearanceLibraryProvider* CAppearanceLibraryBrowserCtrl::getAppearanceLibraryProvider() const
{
    return m->provider;
}

void CAppearanceLibraryBrowserCtrl::ShowTreeWidget(bool show)
{
    m->ui.treeWidget->setVisible(show);
    m->ui.treeLine->setVisible(show);
}

void CAppearanceLibraryBrowserCtrl::ShowAppearanceMenu(bool show)
{
    m->isMenuAllowed = show;
}

void CAppearanceLibraryBrowserCtrl::ShowCollectAndSynchBtn(bool show)
{
    m->ui.collectButton->setVisible(show);
    m->ui.synchronizeButton->setVisible(show);
}

void CAppearanceLibraryBrowserCtrl::ShowImport(bool show)
{
    m->isImportAllowed = show;
}

void CAppearanceLibraryBrowserCtrl::SetDeleteConfirmation(const Confirmation& confirmation)
{
    m->confirmDelete = confirmation;
}

void CAppearanceLibraryBrowserCtrl::SetRemoveConfirmation(const Confirmation& confirmation)
{
    m->confirmRemove = confirmation;
}

void CAppearanceLibraryBrowserCtrl::SetComboBoxCurrentItem(const std::string& name)
{
    const int index = m->ui.comboBox->findData(QString::fromLocal8Bit(name.c_str()));
    const QSignalBlocker blocker(m->ui.comboBox);
    if (index >= 0)
        m->ui.comboBox->setCurrentIndex(index);
}

void CAppearanceLibraryBrowserCtrl::OnComboIndexChange(int index)
{
    if (index < 0)
        return;
    const QVariant data = m->ui.comboBox->itemData(index);
    if (m->provider)
        m->expandTreeWidget(data.toInt());
    else
        emit OnMaterialLibraryChange(data.toString().toLocal8Bit().toStdString());
}

void CAppearanceLibraryBrowserCtrl::OnCollectBtnClick()
{
    emit OnAddFavoriteTextures();
}

void CAppearanceLibraryBrowserCtrl::OnSynchronizedBtnClick()
{
    emit OnSynchronizedCloud();
}

// ---- menus

bool CAppearanceLibraryBrowserCtrl::eventFilter(QObject* watched, QEvent* event)
{
    for (QAbstractItemView* view :
         {static_cast<QAbstractItemView*>(m->ui.treeWidget), static_cast<QAbstractItemView*>(m->ui.tableWidget)}) {
        const bool isMouse = event->type() == QEvent::MouseButtonPress;
        if (watched == (isMouse ? view->viewport() : view))
            return m->viewEvent(*view, *event);
    }
    return QWidget::eventFilter(watched, event);
}

void CAppearanceLibraryBrowserCtrl::OnShowAppearanceMenu(const QPoint& position)
{
    const QTableWidgetItem* item = m->ui.tableWidget->itemAt(position);
    if (!m->isMenuAllowed || !item)
        return;
    if (item->row() != m->ui.tableWidget->currentRow())
        m->ui.tableWidget->setCurrentCell(item->row(), NameColumn);
    if (m->ui.tableWidget->selectionMode() == QAbstractItemView::SingleSelection)
        m->table->SelectClickedRow(item->row());
    m->menus->ShowAppearanceMenu(m->offerFor(m->menuTarget()), m->ui.tableWidget->viewport()->mapToGlobal(position));
}

void CAppearanceLibraryBrowserCtrl::OnShowTreeMenu(const QPoint& position)
{
    const bool canChoose = !m->provider && !m->ui.comboBox->isHidden();
    m->menus->ShowTreeMenu(canChoose, m->ui.treeWidget->viewport()->mapToGlobal(position));
}

void CAppearanceLibraryBrowserCtrl::OnMenuCopyAppearance()
{
    if (const kiv::CAppearanceInstancePtr appearance = m->menuTarget())
        emit OnCopyandAddApperance(appearance);
}

void CAppearanceLibraryBrowserCtrl::OnMenuDeleteAppearance()
{
    if (kiv::CAppearanceInstancePtr appearance = m->menuTarget())
        emit OnDeleteApperance(appearance);
}

void CAppearanceLibraryBrowserCtrl::OnMenuRemoveAppearance()
{
    // Found before the first is announced: its receiver may rebuild the table.
    std::vector<kiv::CAppearanceInstancePtr> appearances;
    for (const QString& id : m->menuTargets())
        appearances.push_back(m->find(id));
    for (kiv::CAppearanceInstancePtr& appearance : appearances) {
        if (appearance)
            emit OnRemoveApperance(appearance);
    }
}

void CAppearanceLibraryBrowserCtrl::OnMenuDownloadAppearance()
{
    if (const kiv::CAppearanceInstancePtr appearance = m->menuTarget())
        emit OnDownloadAppearance(QString::fromLocal8Bit(appearance->GetId().c_str()));
}

void CAppearanceLibraryBrowserCtrl::OnMenuApplyAppearance()
{
    const kiv::CAppearanceInstancePtr appearance = m->menuTarget();
    if (!appearance)
        return;
    m->announce(QString::fromLocal8Bit(appearance->GetId().c_str()));
    emit OnApplyAppearance(appearance);
}

void CAppearanceLibraryBrowserCtrl::OnMenuRenameAppearance()
{
    if (const kiv::CAppearanceInstancePtr appearance = m->menuTarget())
        emit OnRenameAppearance(appearance);
}

void CAppearanceLibraryBrowserCtrl::OnMenuExportAppearances()
{
    Appearances appearances;
    for (const QString& id : m->menuTargets())
        if (const kiv::CAppearanceInstancePtr appearance = m->find(id))
            appearances.push_back(appearance);
    if (!appearances.empty())
        emit OnExportAppearances(appearances);
}

void CAppearanceLibraryBrowserCtrl::OnMenuImportAppearances()
{
    emit OnImportAppearances({});
}

void CAppearanceLibraryBrowserCtrl::OnMenuAppearanceTypeChange()
{
    const kiv::CAppearanceInstancePtr appearance = m->menuTarget();
    if (!appearance)
        return;
    m->dialogTarget = QString::fromLocal8Bit(appearance->GetId().c_str());
    m->chooseType = new CChooseTypeDlg(this);
    m->chooseType->setAttribute(Qt::WA_DeleteOnClose);
    m->chooseType->SetTypeName(QString::fromLocal8Bit(appearance->GetTemplateName().c_str()));
    connect(m->chooseType, SIGNAL(accepted()), this, SLOT(OnMenuAppearanceTypeAccepted()));
    m->chooseType->open();
}

void CAppearanceLibraryBrowserCtrl::OnMenuAppearanceTypeAccepted()
{
    kiv::CAppearanceInstancePtr appearance = m->find(m->dialogTarget);
    if (appearance && m->chooseType)
        emit OnAppearanceTypeChanged(appearance, m->chooseType->GetTypeName().toLocal8Bit().toStdString());
}

void CAppearanceLibraryBrowserCtrl::OnMenuAddFavoriteAppearance()
{
    const kiv::CAppearanceInstancePtr appearance = m->menuTarget();
    if (!appearance)
        return;
    // The first level of a category is a type.
    const QString category = QString::fromLocal8Bit(appearance->GetCategory().c_str()).section('/', 0, 0);
    auto* dialog = new CFavoriteCategoryDlg(category, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog, appearance] {
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
