#include "BrowserState.h"

#include "AppearanceTreeItem.h"
#include "ItemRoles.h"

void CBrowserState::ReadCategories(const QTreeWidgetItem& item, const QString& path)
{
    categories.append(path);
    if (item.isExpanded())
        expanded.insert(path);
    for (int i = 0; i < item.childCount() && item.child(i)->type() == CategoryItem; ++i)
        ReadCategories(*item.child(i), item.child(i)->data(0, IdRole).toString());
}

void CBrowserState::WriteCategories(QTreeWidgetItem& item, const QString& path) const
{
    // Asking is cheap, and closing what is closed already is not.
    if (item.isExpanded() != expanded.contains(path))
        item.setExpanded(!item.isExpanded());
    for (int i = 0; i < item.childCount() && item.child(i)->type() == CategoryItem; ++i)
        WriteCategories(*item.child(i), item.child(i)->data(0, IdRole).toString());
}
