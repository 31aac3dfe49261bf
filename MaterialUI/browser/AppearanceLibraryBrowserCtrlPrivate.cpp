#include "AppearanceLibraryBrowserCtrlPrivate.h"

#include "BrowserLook.h"
#include "ImageDelegate.h"
#include "ItemRoles.h"

#include <MaterialConstants.h>

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QListView>
#include <QTimer>

CAppearanceLibraryBrowserCtrl::Private::Private(CAppearanceLibraryBrowserCtrl& owner,
                                                kiv::CAppearanceLibraryManager& libraryManager,
                                                AppearanceLibraryProvider* libraryProvider, bool cloud)
    : q(owner), manager(libraryManager), provider(libraryProvider), isCloudEnabled(cloud)
{
    ui.setupUi(&q);
    tree = std::make_unique<CLibraryTree>(*ui.treeWidget, manager);
    table = std::make_unique<CAppearanceTable>(*ui.tableWidget);
}

void CAppearanceLibraryBrowserCtrl::Private::initViews()
{
    q.setStyleSheet(BrowserLook::ControlStyle);
    ui.treeWidget->setStyleSheet(BrowserLook::TreeStyle);
    ui.tableWidget->setStyleSheet(BrowserLook::TableStyle);
    ui.tableWidget->horizontalHeader()->setStyleSheet(BrowserLook::HeaderStyle);
    ui.tableWidget->setColumnWidth(PictureColumn, BrowserLook::PictureWidth);
    ui.tableWidget->horizontalHeader()->setHighlightSections(false);
    ui.tableWidget->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    ui.tableWidget->setItemDelegateForColumn(PictureColumn, &ImageDelegate::Shared());
    QFont small = ui.comboBox->view()->font();
    small.setPixelSize(10);
    ui.comboBox->view()->setFont(small);
    ui.comboBox->view()->setMinimumHeight(20);
}

void CAppearanceLibraryBrowserCtrl::Private::connectViews()
{
    QObject::connect(ui.tableWidget->horizontalHeader(), SIGNAL(sectionClicked(int)), &q, SLOT(onTableWidgetSort(int)));
    QObject::connect(ui.treeWidget, SIGNAL(itemClicked(QTreeWidgetItem*, int)), &q,
                     SLOT(currentItemChanged(QTreeWidgetItem*, int)));
    QObject::connect(ui.treeWidget, SIGNAL(currentItemChanged(QTreeWidgetItem*, QTreeWidgetItem*)), &q,
                     SLOT(currentItemChanged(QTreeWidgetItem*, QTreeWidgetItem*)));
    QObject::connect(ui.tableWidget, SIGNAL(itemClicked(QTableWidgetItem*)), &q, SLOT(OnSelectItem(QTableWidgetItem*)));
    QObject::connect(ui.tableWidget, SIGNAL(currentItemChanged(QTableWidgetItem*, QTableWidgetItem*)), &q,
                     SLOT(currentItemChanged(QTableWidgetItem*, QTableWidgetItem*)));
    QObject::connect(ui.comboBox, SIGNAL(currentIndexChanged(int)), &q, SLOT(OnComboIndexChange(int)));
    QObject::connect(ui.tableWidget, SIGNAL(customContextMenuRequested(QPoint)), &q,
                     SLOT(OnShowAppearanceMenu(QPoint)));
    QObject::connect(ui.treeWidget, SIGNAL(customContextMenuRequested(QPoint)), &q, SLOT(OnShowTreeMenu(QPoint)));
    for (QAbstractItemView* view : views()) {
        view->installEventFilter(&q);
        view->viewport()->installEventFilter(&q);
    }
}

void CAppearanceLibraryBrowserCtrl::Private::initButtons()
{
    ui.collectButton->setText(CAppearanceLibraryBrowserCtrl::tr("收藏"));
    ui.synchronizeButton->setText(CAppearanceLibraryBrowserCtrl::tr("同步"));
    q.ShowCollectAndSynchBtn(isCloudEnabled);
    QObject::connect(ui.collectButton, SIGNAL(clicked()), &q, SLOT(OnCollectBtnClick()));
    QObject::connect(ui.synchronizeButton, SIGNAL(clicked()), &q, SLOT(OnSynchronizedBtnClick()));
}

void CAppearanceLibraryBrowserCtrl::Private::initComboBox()
{
    const QSignalBlocker blocker(ui.comboBox);
    if (!provider) {
        ui.comboBox->addItem(CAppearanceLibraryBrowserCtrl::tr("公共材质"),
                             QString::fromStdString(SYSTEM_LIBRARY_NAME));
        ui.comboBox->addItem(CAppearanceLibraryBrowserCtrl::tr("我的材质"),
                             QString::fromStdString(FAVORITE_LIBRARY_NAME));
        return;
    }
    for (const AppearanceLibraryProvider::Level& level : provider->GetLevels())
        ui.comboBox->addItem(level.text, level.treeIndex);
}

void CAppearanceLibraryBrowserCtrl::Private::initTree()
{
    tree->initTreeIcon();
    if (provider && ui.comboBox->count() > 0)
        tree->expandTreeWidget(ui.comboBox->currentData().toInt(), *provider);
}

std::array<QAbstractItemView*, 2> CAppearanceLibraryBrowserCtrl::Private::views() const
{
    return {ui.treeWidget, ui.tableWidget};
}

// ---- what is shown

void CAppearanceLibraryBrowserCtrl::Private::showLibrary(const kiv::CAppearanceLibraryPtr& shown)
{
    const Silence silence(*this);
    ExpandMaterialLibrary(*addLibrary(shown, -1));
}

// All but the choice of what the table shows.
CLibraryTreeItem* CAppearanceLibraryBrowserCtrl::Private::addLibrary(const kiv::CAppearanceLibraryPtr& shown,
                                                                     int treeIndex)
{
    tree->initTreeIcon();
    const BrowserLook::CLibraryLook look = BrowserLook::LookOf(shown->GetName(), manager);
    nameWidgets(look.prefix);
    selectComboEntry(QString::fromLocal8Bit(shown->GetName().c_str()));
    if (provider && !tree->HasProviderNodes())
        initTree();
    CLibraryTreeItem* item = tree->AddLibrary(shown, look.text, treeIndex);
    library = shown;
    q.SetTableWidgetSelectMode();
    buildIndexLater();
    return item;
}

// Once the library is on the screen: its thread would compete with the filling of the table.
void CAppearanceLibraryBrowserCtrl::Private::buildIndexLater()
{
    QTimer::singleShot(0, &q, [this] {
        if (CLibraryTreeItem* item = libraryItem())
            item->Index().Build(item->Entries());
    });
}

void CAppearanceLibraryBrowserCtrl::Private::nameWidgets(const QString& prefix)
{
    ui.comboBox->setObjectName(prefix + "comboBox");
    ui.treeWidget->setObjectName(prefix + "treeWidget");
    ui.tableWidget->setObjectName(prefix + "tableWidget");
}

// A library that is no entry (the project's) is not chosen by the box, which would name another one.
void CAppearanceLibraryBrowserCtrl::Private::selectComboEntry(const QString& name)
{
    if (provider)
        return;
    const int index = ui.comboBox->findData(name);
    const QSignalBlocker blocker(ui.comboBox);
    ui.comboBox->setVisible(index >= 0);
    ui.comboBox->setCurrentIndex(index);
}

void CAppearanceLibraryBrowserCtrl::Private::ExpandMaterialLibrary(CLibraryTreeItem& item)
{
    ui.treeWidget->setCurrentItem(&item);
    ExpandLibrary(item, QString());
}

void CAppearanceLibraryBrowserCtrl::Private::ExpandLibrary(QTreeWidgetItem& item, const QString& shownPath)
{
    CLibraryTreeItem* owner = CLibraryTree::LibraryOf(&item);
    if (!owner)
        owner = libraryItem();
    if (!owner)
        return;
    const Silence silence(*this);
    library = owner->Library();
    path = shownPath;
    table->Fill(owner->Entries(), path);
    ui.tableWidget->scrollToTop();
}

void CAppearanceLibraryBrowserCtrl::Private::expandTreeWidget(int treeIndex)
{
    const Silence silence(*this);
    tree->expandTreeWidget(treeIndex, *provider);
    QTreeWidgetItem* first = ui.treeWidget->topLevelItem(0);
    ui.treeWidget->setCurrentItem(first);
    if (first)
        show(*first);
}

CLibraryTreeItem* CAppearanceLibraryBrowserCtrl::Private::libraryItem() const
{
    return library ? tree->FindLibrary(library->GetName()) : nullptr;
}

CAppearanceTreeItem* CAppearanceLibraryBrowserCtrl::Private::findTreeItem(const QString& id) const
{
    CLibraryTreeItem* item = libraryItem();
    return item ? item->Find(id) : nullptr;
}

int CAppearanceLibraryBrowserCtrl::Private::rowOf(const QString& id) const
{
    const CAppearanceTreeItem* item = findTreeItem(id);
    return item ? table->RowOf(*item->Entry()) : -1;
}

kiv::CAppearanceInstancePtr CAppearanceLibraryBrowserCtrl::Private::find(const QString& id) const
{
    return library ? library->FindInstance(id.toLocal8Bit().toStdString()) : nullptr;
}

bool CAppearanceLibraryBrowserCtrl::Private::isShown(const kiv::String& libraryName) const
{
    return library && library->GetName() == libraryName;
}

// ---- selection

void CAppearanceLibraryBrowserCtrl::Private::show(QTreeWidgetItem& item)
{
    if (item.type() == AppearanceItem)
        selectAppearanceItem(static_cast<CAppearanceTreeItem&>(item));
    else
        ExpandLibrary(item, item.type() == CategoryItem ? item.data(0, IdRole).toString() : QString());
}

void CAppearanceLibraryBrowserCtrl::Private::selectAppearanceItem(CAppearanceTreeItem& item)
{
    CLibraryTreeItem* owner = CLibraryTree::LibraryOf(&item);
    const QString id = item.Entry()->Id();
    if (owner->Library() != library || !item.Entry()->IsBelow(path))
        ExpandLibrary(*owner, item.Entry()->Category());
    selectRow(id);
    announce(id);
}

bool CAppearanceLibraryBrowserCtrl::Private::selectRow(const QString& id)
{
    const Silence silence(*this);
    const int row = rowOf(id);
    if (row >= 0)
        table->SetCurrentRow(row);
    return row >= 0;
}

void CAppearanceLibraryBrowserCtrl::Private::announce(const QString& id)
{
    const kiv::CAppearanceInstancePtr appearance = find(id);
    if (!appearance)
        return;
    selectedId = id;
    if (isPressed)
        announcedByPress = id;
    emit q.OnSelectAppearance(appearance);
}

bool CAppearanceLibraryBrowserCtrl::Private::isAnnounced(const QString& id) const
{
    return isPressed && announcedByPress == id;
}

void CAppearanceLibraryBrowserCtrl::Private::search(QTreeWidgetItem* after)
{
    CAppearanceTreeItem* found = library ? tree->Search(keyword, after) : nullptr;
    if (!found)
        return;
    const bool isNew = found != ui.treeWidget->currentItem() || found->Entry()->Id() != selectedId;
    {
        const Silence silence(*this);
        found->setExpanded(true);
        ui.treeWidget->setCurrentItem(found);
    }
    if (isNew)
        selectAppearanceItem(*found);
}

// ---- events

bool CAppearanceLibraryBrowserCtrl::Private::viewEvent(QAbstractItemView& view, QEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
        isPressed = true;
        announcedByPress.clear();
        return false;
    case QEvent::FocusIn:
        // The view would make its first row current, and who only comes past with Tab would have chosen it.
        view.viewport()->update();
        return !view.currentIndex().isValid();
    case QEvent::KeyPress:
        isPressed = false;
        leavePictureColumn();
        return keyEvent(view, static_cast<QKeyEvent&>(event).key());
    case QEvent::ShortcutOverride:
        prepareShortcut(static_cast<QKeyEvent&>(event));
        return false;
    case QEvent::ContextMenu:
        if (static_cast<QContextMenuEvent&>(event).reason() != QContextMenuEvent::Keyboard)
            return false;
        contextMenuByKey(view);
        return true;
    default:
        return false;
    }
}

// Typing a name looks in the current column. Not done as the cell becomes current: the view still reads what the change
// of the current cell would free.
void CAppearanceLibraryBrowserCtrl::Private::leavePictureColumn()
{
    if (ui.tableWidget->currentColumn() != PictureColumn)
        return;
    const Silence silence(*this);
    ui.tableWidget->setCurrentCell(ui.tableWidget->currentRow(), NameColumn, QItemSelectionModel::NoUpdate);
}

bool CAppearanceLibraryBrowserCtrl::Private::keyEvent(QAbstractItemView& view, int key)
{
    switch (key) {
    case Qt::Key_F3:
        search(ui.treeWidget->currentItem());
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return returnPressed(view);
    default:
        return false;
    }
}

// A dialog may take the key too, to accept what is selected, but not the one that opens a category.
bool CAppearanceLibraryBrowserCtrl::Private::returnPressed(const QAbstractItemView& view)
{
    QTreeWidgetItem* item = &view == ui.treeWidget ? ui.treeWidget->currentItem() : nullptr;
    if (item && item->type() != AppearanceItem) {
        item->setExpanded(!item->isExpanded());
        return true;
    }
    announce(item ? item->data(0, IdRole).toString() : table->IdOf(ui.tableWidget->currentRow()));
    return false;
}
