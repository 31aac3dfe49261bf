#pragma once

#include "AppearanceEntry.h"
#include "SearchIndex.h"

#include <QHash>
#include <QIcon>
#include <QTreeWidgetItem>

/// Kinds of tree items, told apart by QTreeWidgetItem::type().
enum EnTreeItemType { LibraryItem = QTreeWidgetItem::UserType, CategoryItem, AppearanceItem };

class CAppearanceTreeItem;

/// The top-level item of a library. It owns what is shown of it, so that clearing the tree lets go of the library.
class CLibraryTreeItem : public QTreeWidgetItem {
public:
    explicit CLibraryTreeItem(kiv::CAppearanceLibraryPtr library)
        : QTreeWidgetItem(LibraryItem), m_library(std::move(library))
    {
    }

    const kiv::CAppearanceLibraryPtr& Library() const { return m_library; }
    CAppearanceEntries& Entries() { return m_entries; }  ///< in the order of the library
    CSearchIndex& Index() { return m_index; }

    /// The item of the appearance with this id below this one, or null. Whoever adds or removes one later tells it.
    CAppearanceTreeItem* Find(const QString& id);
    void Remember(CAppearanceTreeItem& item);
    void Forget(const QString& id) { m_items.remove(id); }

private:
    void rememberBelow(QTreeWidgetItem& item);

    kiv::CAppearanceLibraryPtr m_library;
    QHash<QString, CAppearanceTreeItem*> m_items;  ///< empty until one is asked for
    CAppearanceEntries m_entries;
    CSearchIndex m_index;
};

/// The item of a category, or of a node of a provider's tree. What its siblings are ordered by is at hand without
/// asking for item data: a library may have thousands of categories.
class CCategoryTreeItem : public QTreeWidgetItem {
public:
    CCategoryTreeItem(const QString& path, const QString& text, const QIcon& icon);

    const QString& Path() const { return m_path; }
    /// Whether the category comes before a sibling: by the shown text, "Other" last.
    bool IsBefore(const CCategoryTreeItem& other) const;

private:
    QString m_path;
    QString m_text;
    bool m_isOther;
};

/// The tree item of one appearance.
class CAppearanceTreeItem : public QTreeWidgetItem {
public:
    CAppearanceTreeItem(CAppearanceEntryPtr entry, const QIcon& icon)
        : QTreeWidgetItem(AppearanceItem), m_entry(std::move(entry)), m_icon(icon)
    {
    }

    QVariant data(int column, int role) const override;

    const CAppearanceEntryPtr& Entry() const { return m_entry; }
    void SetEntry(CAppearanceEntryPtr entry) { m_entry = std::move(entry); }

private:
    CAppearanceEntryPtr m_entry;
    QIcon m_icon;
};
