#include "AppearanceLibraryBrowserCtrl.h"

#include "AppearanceLibraryBrowserCtrlPrivate.h"
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
    m->initMenus();
    m->initDragging();
    m->initComboBox();
    m->initTree();
}

// The views outlive the private part by a little and may change their current items as they go.
CAppearanceLibraryBrowserCtrl::~CAppearanceLibraryBrowserCtrl()
{
    for (QAbstractItemView* view : m->views()) {
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
    const bool isNew =
        isAppearance ? !m->isAnnounced(id) : m->path != (clicked->type() == CategoryItem ? id : QString());
    m->isPressed = false;  // before announcing, which may be the end of this browser
    if (isNew)
        m->show(*clicked);
}

void CAppearanceLibraryBrowserCtrl::currentItemChanged(QTableWidgetItem* current, QTableWidgetItem* previous)
{
    if (m->silent > 0 || !current || current == previous)
        return;
    if (!previous || previous->row() != current->row())
        m->announce(m->table->IdOf(current->row()));
}

void CAppearanceLibraryBrowserCtrl::OnSelectItem(QTableWidgetItem* item)
{
    if (!item)
        return;
    if (item->column() == PictureColumn)
        m->table->SelectClickedRow(item->row());
    m->leavePictureColumn();
    const QString id = m->table->IdOf(item->row());
    const bool isNew = !m->isAnnounced(id);
    m->isPressed = false;
    if (isNew)
        m->announce(id);
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

// ---- events

bool CAppearanceLibraryBrowserCtrl::eventFilter(QObject* watched, QEvent* event)
{
    for (QAbstractItemView* view : m->views()) {
        const bool isMouse = event->type() == QEvent::MouseButtonPress;
        if (watched == (isMouse ? view->viewport() : view))
            return m->viewEvent(*view, *event);
    }
    return QWidget::eventFilter(watched, event);
}
