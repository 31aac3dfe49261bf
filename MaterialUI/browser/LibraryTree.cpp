#include "LibraryTree.h"

#include "ItemRoles.h"

#include <map>
#include <unordered_map>

namespace {

// Widgets walk their items recursively, so a made-up category must not nest without end.
constexpr int MaxCategoryDepth = 16;

/// Visits the item and everything below it in tree order until the visitor answers true; the item that it did so for.
template <typename Visitor>
QTreeWidgetItem* walk(QTreeWidgetItem* item, const Visitor& visit)
{
    if (visit(item))
        return item;
    const int count = item->childCount();
    for (int i = 0; i < count; ++i) {
        if (QTreeWidgetItem* found = walk(item->child(i), visit))
            return found;
    }
    return nullptr;
}

template <typename Visitor>
QTreeWidgetItem* walkTree(const QTreeWidget& tree, const Visitor& visit)
{
    for (int i = 0; i < tree.topLevelItemCount(); ++i) {
        if (QTreeWidgetItem* found = walk(tree.topLevelItem(i), visit))
            return found;
    }
    return nullptr;
}

QString toText(const kiv::String& narrow)
{
    return QString::fromLocal8Bit(narrow.data(), int(narrow.size()));
}

const CCategoryTreeItem* categoryAt(const QTreeWidgetItem& parent, int index)
{
    const QTreeWidgetItem* child = index < parent.childCount() ? parent.child(index) : nullptr;
    return child && child->type() == CategoryItem ? static_cast<const CCategoryTreeItem*>(child) : nullptr;
}

/// Where a category belongs among those of the parent, which come before its appearances.
int positionOf(const QTreeWidgetItem& parent, const CCategoryTreeItem& item)
{
    int i = 0;
    for (const CCategoryTreeItem* child; (child = categoryAt(parent, i)) && !item.IsBefore(*child);)
        ++i;
    return i;
}

QTreeWidgetItem* findChildCategory(const QTreeWidgetItem& parent, const QString& path)
{
    for (int i = 0; const CCategoryTreeItem* child = categoryAt(parent, i); ++i) {
        if (child->Path() == path)
            return parent.child(i);
    }
    return nullptr;
}

QStringList segmentsOf(const QString& path)
{
    return path.split('/', Qt::SkipEmptyParts).mid(0, MaxCategoryDepth);
}

}  // namespace

CLibraryTree::CLibraryTree(QTreeWidget& tree, kiv::CAppearanceLibraryManager& manager)
    : m_tree(tree), m_manager(manager)
{
}

void CLibraryTree::initTreeIcon()
{
    m_libraryIcon = QIcon(":/Resources/Library.png");
    m_categoryIcon = QIcon(":/Resources/Category.png");
    m_appearanceIcon = QIcon(":/Resources/Appearance.png");
}

QString CLibraryTree::localized(const kiv::String& text) const
{
    return toText(m_manager.LocalizeAppearanceString(text));
}

CLibraryTreeItem* CLibraryTree::AddLibrary(const kiv::CAppearanceLibraryPtr& library, const QString& text, int index)
{
    auto* item = new CLibraryTreeItem(library);
    item->setText(0, text);
    item->setIcon(0, m_libraryIcon);
    item->setData(0, IdRole, toText(library->GetName()));
    readEntries(*item);
    // Only now, complete: an item that is in a tree announces every change.
    m_tree.insertTopLevelItem(index < 0 ? m_tree.topLevelItemCount() : index, item);
    item->setExpanded(true);
    return item;
}

void CLibraryTree::readEntries(CLibraryTreeItem& library)
{
    // Stored texts that name the same category ("a/b", "a//b/") share its list.
    std::map<QString, QList<QTreeWidgetItem*>> lists;
    std::unordered_map<kiv::String, std::pair<const QString, QList<QTreeWidgetItem*>>*> listOf;
    CAppearanceEntries& entries = library.Entries();
    entries.reserve(library.Library()->count());
    for (const auto& [id, appearance] : *library.Library()) {
        auto& list = listOf[appearance->GetCategory()];
        if (!list)
            list = &*lists.try_emplace(CleanCategoryPath(toText(appearance->GetCategory()))).first;
        entries.push_back(std::make_shared<CAppearanceEntry>(m_manager, id, appearance));
        entries.back()->SetCategory(list->first);
        list->second.append(new CAppearanceTreeItem(entries.back(), m_appearanceIcon));
    }
    for (const auto& [path, items] : lists)
        AddCategory(library, path)->addChildren(items);
}

void CLibraryTree::place(CLibraryTreeItem& library, CAppearanceEntry& entry)
{
    entry.SetCategory(CleanCategoryPath(toText(entry.Appearance()->GetCategory())));
    library.Index().Exclude(entry);
}

CAppearanceTreeItem* CLibraryTree::AddAppearance(CLibraryTreeItem& library, const CAppearanceEntryPtr& entry)
{
    place(library, *entry);
    auto* item = new CAppearanceTreeItem(entry, m_appearanceIcon);
    AddCategory(library, entry->Category())->addChild(item);
    library.Remember(*item);
    return item;
}

CAppearanceTreeItem* CLibraryTree::Exchange(CLibraryTreeItem& library, CAppearanceTreeItem& old,
                                            const CAppearanceEntryPtr& entry)
{
    place(library, *entry);
    if (entry->Category() != old.Entry()->Category())
        return AddAppearance(library, entry);
    old.SetEntry(entry);
    return &old;
}

QTreeWidgetItem* CLibraryTree::AddCategory(CLibraryTreeItem& library, const QString& path)
{
    QTreeWidgetItem* item = &library;
    QString below;
    for (const QString& segment : segmentsOf(path)) {
        below += (below.isEmpty() ? "" : "/") + segment;
        item = childCategory(*item, segment, below);
    }
    return item;
}

QTreeWidgetItem* CLibraryTree::childCategory(QTreeWidgetItem& parent, const QString& segment, const QString& path)
{
    if (QTreeWidgetItem* found = findChildCategory(parent, path))
        return found;
    auto* item = new CCategoryTreeItem(path, localized(segment.toLocal8Bit().toStdString()), m_categoryIcon);
    parent.insertChild(positionOf(parent, *item), item);
    return item;
}

CLibraryTreeItem* CLibraryTree::FindLibrary(const kiv::String& name) const
{
    for (int i = 0; i < m_tree.topLevelItemCount(); ++i) {
        CLibraryTreeItem* item = LibraryOf(m_tree.topLevelItem(i));
        if (item && item->Library()->GetName() == name)
            return item;
    }
    return nullptr;
}

CLibraryTreeItem* CLibraryTree::LibraryOf(QTreeWidgetItem* item)
{
    while (item && item->parent())
        item = item->parent();
    return item && item->type() == LibraryItem ? static_cast<CLibraryTreeItem*>(item) : nullptr;
}

QTreeWidgetItem* CLibraryTree::NearestCategory(CLibraryTreeItem& library, const QString& path)
{
    QTreeWidgetItem* item = &library;
    QString below;
    for (const QString& segment : segmentsOf(path)) {
        below += (below.isEmpty() ? "" : "/") + segment;
        QTreeWidgetItem* child = findChildCategory(*item, below);
        if (!child)
            break;
        item = child;
    }
    return item;
}

QTreeWidgetItem* CLibraryTree::FindItem(const QString& userText) const
{
    return walkTree(m_tree, [&](const QTreeWidgetItem* item) { return item->data(0, IdRole).toString() == userText; });
}

CAppearanceTreeItem* CLibraryTree::Search(const QString& keyword, QTreeWidgetItem* after) const
{
    CLibraryTreeItem* first = after ? LibraryOf(after) : nullptr;
    for (int i = first ? m_tree.indexOfTopLevelItem(first) : 0; i < m_tree.topLevelItemCount(); ++i) {
        CLibraryTreeItem* library = LibraryOf(m_tree.topLevelItem(i));
        CAppearanceTreeItem* found =
            library ? searchLibrary(*library, keyword, library == first ? after : nullptr) : nullptr;
        if (found)
            return found;
    }
    return nullptr;
}

CAppearanceTreeItem* CLibraryTree::searchLibrary(CLibraryTreeItem& library, const QString& keyword,
                                                 const QTreeWidgetItem* after)
{
    CSearchIndex& index = library.Index();
    index.Prepare(keyword);
    if (index.IsHopeless())
        return nullptr;
    bool isPast = after == nullptr;
    return static_cast<CAppearanceTreeItem*>(walk(&library, [&](QTreeWidgetItem* item) {
        if (!isPast || item->type() != AppearanceItem) {
            isPast = isPast || item == after;
            return false;
        }
        const CAppearanceEntry& entry = *static_cast<const CAppearanceTreeItem*>(item)->Entry();
        return index.MayContain(entry) && entry.Contains(keyword);
    }));
}

void CLibraryTree::expandTreeWidget(int treeIndex, const AppearanceLibraryProvider& provider)
{
    for (int i = m_tree.topLevelItemCount(); i-- > 0;) {
        if (m_tree.topLevelItem(i)->type() == CategoryItem)
            delete m_tree.takeTopLevelItem(i);
    }
    QList<QTreeWidgetItem*> nodes;
    for (const AppearanceLibraryProvider::Category& category : provider.GetCategories(treeIndex))
        nodes.append(createTreeItem(category));
    m_tree.insertTopLevelItems(0, nodes);
}

bool CLibraryTree::HasProviderNodes() const
{
    return m_tree.topLevelItemCount() > 0 && m_tree.topLevelItem(0)->type() == CategoryItem;
}

QTreeWidgetItem* CLibraryTree::createTreeItem(const AppearanceLibraryProvider::Category& category) const
{
    const QString count = category.count < 0 ? QString() : QString("[%1]").arg(category.count);
    auto* item = new CCategoryTreeItem(CleanCategoryPath(category.categoryPath), category.name + count,
                                       category.icon.isNull() ? m_categoryIcon : category.icon);
    for (const AppearanceLibraryProvider::Category& child : category.children)
        item->addChild(createTreeItem(child));
    return item;
}
