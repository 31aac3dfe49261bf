#pragma once

#include "AppearanceTreeItem.h"

#include <kiv/AppearanceLibraryProvider.h>

#include <QTreeWidget>

/// The browser's work on its tree: libraries with their categories and appearances, and the trees of a provider. Knows
/// nothing of selection.
class CLibraryTree {
public:
    /// Both are borrowed.
    CLibraryTree(QTreeWidget& tree, kiv::CAppearanceLibraryManager& manager);

    /// Loads the icons of new items.
    void initTreeIcon();

    /// Reads the library and adds its top-level item, with everything below it, at the index (-1: at the end).
    CLibraryTreeItem* AddLibrary(const kiv::CAppearanceLibraryPtr& library, const QString& text, int index = -1);
    CLibraryTreeItem* FindLibrary(const kiv::String& name) const;
    /// The library in whose tree the item is; null for a provider's item.
    static CLibraryTreeItem* LibraryOf(QTreeWidgetItem* item);

    /// Adds an appearance, and its category when it is new.
    CAppearanceTreeItem* AddAppearance(CLibraryTreeItem& library, const CAppearanceEntryPtr& entry);
    /// Shows an appearance anew. The item that now shows it: the old one or, where the category is another, a new one;
    /// the old one is then left to the caller.
    CAppearanceTreeItem* Exchange(CLibraryTreeItem& library, CAppearanceTreeItem& old,
                                  const CAppearanceEntryPtr& entry);
    /// The item that lists the appearances of the category: its own or, when it is nested too deep, an ancestor's. Made
    /// when missing, in the order of the shown texts with "Other" last.
    QTreeWidgetItem* AddCategory(CLibraryTreeItem& library, const QString& path);

    /// The item of the category or of its nearest ancestor that there is.
    static QTreeWidgetItem* NearestCategory(CLibraryTreeItem& library, const QString& path);
    /// The first item whose Qt::UserRole text is this, or null.
    QTreeWidgetItem* FindItem(const QString& userText) const;

    /// The first appearance, in tree order, that contains the keyword; after the item if there is one.
    CAppearanceTreeItem* Search(const QString& keyword, QTreeWidgetItem* after = nullptr) const;

    /// Replaces the provider's nodes, which come before the libraries, by those of another tree.
    void expandTreeWidget(int treeIndex, const AppearanceLibraryProvider& provider);
    bool HasProviderNodes() const;

private:
    static void place(CLibraryTreeItem& library, CAppearanceEntry& entry);
    static CAppearanceTreeItem* searchLibrary(CLibraryTreeItem& library, const QString& keyword,
                                              const QTreeWidgetItem* after);
    QString localized(const kiv::String& text) const;
    void readEntries(CLibraryTreeItem& library);
    QTreeWidgetItem* childCategory(QTreeWidgetItem& parent, const QString& segment, const QString& path);
    QTreeWidgetItem* createTreeItem(const AppearanceLibraryProvider::Category& category) const;

    QTreeWidget& m_tree;
    kiv::CAppearanceLibraryManager& m_manager;
    QIcon m_libraryIcon;
    QIcon m_categoryIcon;
    QIcon m_appearanceIcon;
};
