#pragma once

#include "AppearanceDrag.h"
#include "AppearanceDrop.h"
#include "AppearanceLibraryBrowserCtrl.h"
#include "AppearanceMenus.h"
#include "AppearanceTable.h"
#include "AppearanceTargets.h"
#include "BrowserState.h"
#include "LibraryTree.h"
#include "ui_AppearanceLibraryBrowserCtrl.h"

#include <QPointer>

#include <array>
#include <optional>

class CChooseLibraryDlg;
class CChooseTypeDlg;

struct CAppearanceLibraryBrowserCtrl::Private {
    /// While one exists, changes of the current items are the browser's own doing and announce nothing.
    class Silence {
    public:
        explicit Silence(Private& browser) : m_browser(browser) { ++m_browser.silent; }
        ~Silence() { --m_browser.silent; }
        Q_DISABLE_COPY(Silence)

    private:
        Private& m_browser;
    };

    Private(CAppearanceLibraryBrowserCtrl& owner, kiv::CAppearanceLibraryManager& libraryManager,
            AppearanceLibraryProvider* libraryProvider, bool cloud);

    // ---- construction
    void initViews();
    void connectViews();
    void initButtons();
    void initMenus();
    void initDragging();
    void initComboBox();
    void initTree();

    // ---- what is shown
    void showLibrary(const kiv::CAppearanceLibraryPtr& shown);
    CLibraryTreeItem* addLibrary(const kiv::CAppearanceLibraryPtr& shown, int treeIndex);
    void buildIndexLater();
    void nameWidgets(const QString& prefix);
    void selectComboEntry(const QString& name);
    void ExpandMaterialLibrary(CLibraryTreeItem& item);
    void ExpandLibrary(QTreeWidgetItem& item, const QString& path);
    void expandTreeWidget(int treeIndex);
    std::array<QAbstractItemView*, 2> views() const;
    CLibraryTreeItem* libraryItem() const;
    CAppearanceTreeItem* findTreeItem(const QString& id) const;
    int rowOf(const QString& id) const;
    kiv::CAppearanceInstancePtr find(const QString& id) const;
    bool isShown(const kiv::String& libraryName) const;

    // ---- updating. What concerns one appearance costs the same in a library of any size, but for moving rows.
    /// `old` is the item that shows the appearance so far, or null.
    void ExpandTabelWidget(const kiv::CAppearanceInstancePtr& appearance, CAppearanceTreeItem* old);
    void exchange(CLibraryTreeItem& item, CAppearanceTreeItem& old, const CAppearanceEntryPtr& entry);
    bool keepRow(const QString& id);
    void ReduceTabelWidget(CAppearanceTreeItem& item, const QString& id);
    void removeTreeItem(CLibraryTreeItem& owner, CAppearanceTreeItem& item);
    void removeEmptyCategories(QTreeWidgetItem* category);
    void refreshEntry(CAppearanceTreeItem& item);
    void rebuild(const kiv::CAppearanceLibraryPtr& changed);
    CBrowserState captureState() const;
    void restoreState(const CBrowserState& state);
    void restoreTree(CLibraryTreeItem& item, const CBrowserState& state);
    void restoreTable(const CBrowserState& state);

    // ---- selection
    void show(QTreeWidgetItem& item);
    void selectAppearanceItem(CAppearanceTreeItem& item);
    bool selectRow(const QString& id);
    void announce(const QString& id);
    bool isAnnounced(const QString& id) const;
    void search(QTreeWidgetItem* after);

    // ---- menus
    void openMenu(const CAppearanceTargets& targets, const QPoint& globalPosition);
    void contextMenuByKey(QAbstractItemView& view);
    void prepareShortcut(const QKeyEvent& event);
    CAppearanceTargets takeTargets();
    void forgetTargets();
    CAppearanceTargets targetsAt(const QString& id) const;
    CAppearanceTargets currentTargets() const;
    CAppearanceMenus::Offer offerFor(const CAppearanceTargets& targets) const;
    /// False when nothing is left to be asked about. True: the browser still exists.
    bool isConfirmed(const CAppearanceTargets& targets, const Confirmation& confirmation);
    kiv::CAppearanceLibraryPtr findLibrary(const kiv::String& name) const;

    // ---- dragging and dropping
    kiv::CAppearanceLibraryPtr importTarget() const;
    CAppearanceEntryPtr entryAt(const QAbstractItemView& view, const QPoint& position) const;

    // ---- events of the two views; true when they are done with
    bool viewEvent(QAbstractItemView& view, QEvent& event);
    void leavePictureColumn();
    bool keyEvent(QAbstractItemView& view, int key);
    bool returnPressed(const QAbstractItemView& view);

    CAppearanceLibraryBrowserCtrl& q;
    kiv::CAppearanceLibraryManager& manager;
    AppearanceLibraryProvider* provider;
    Ui::CAppearanceLibraryBrowserCtrl ui;
    std::unique_ptr<CLibraryTree> tree;
    std::unique_ptr<CAppearanceTable> table;
    std::unique_ptr<CAppearanceMenus> menus;
    QPointer<CChooseLibraryDlg> chooseLibrary;
    QPointer<CChooseTypeDlg> chooseType;
    AppearanceTarget dialogTarget;  ///< the appearance that the type dialog asks for
    /// What the open menu, or the key being pressed, acts on.
    std::optional<CAppearanceTargets> remembered;

    kiv::CAppearanceLibraryPtr library;  ///< the one shown
    QString path;                        ///< the category shown, empty for the whole library
    QString keyword;
    QString selectedId;
    /// A mouse press changes the current item and its release then clicks it: one choice, to be announced once.
    QString announcedByPress;
    bool isPressed = false;
    Confirmation confirmDelete;
    Confirmation confirmRemove;
    bool isMenuAllowed = true;
    bool isImportAllowed = false;
    bool isCloudEnabled;
    int silent = 0;
};
