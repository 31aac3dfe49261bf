#include "AppearanceTreeItem.h"

#include "ItemRoles.h"

QVariant CAppearanceTreeItem::data(int column, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return m_entry->Name();
    case Qt::DecorationRole:
        return m_icon;
    case Qt::ToolTipRole:
        return m_entry->ToolTip();
    case IdRole:
        return m_entry->Id();
    case AppearanceRole:
        return true;
    default:
        return QTreeWidgetItem::data(column, role);
    }
}
