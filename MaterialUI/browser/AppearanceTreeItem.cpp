#include "AppearanceTreeItem.h"

#include "ItemRoles.h"

#include <PlainTip.h>

CAppearanceTreeItem* CLibraryTreeItem::Find(const QString& id)
{
    if (m_items.isEmpty() && !m_entries.empty()) {
        m_items.reserve(int(m_entries.size()));
        rememberBelow(*this);
    }
    return m_items.value(id);
}

void CLibraryTreeItem::Remember(CAppearanceTreeItem& item)
{
    if (!m_items.isEmpty())
        m_items.insert(item.Entry()->Id(), &item);
}

void CLibraryTreeItem::rememberBelow(QTreeWidgetItem& item)
{
    for (int i = 0; i < item.childCount(); ++i) {
        QTreeWidgetItem* child = item.child(i);
        if (child->type() == AppearanceItem)
            m_items.insert(static_cast<CAppearanceTreeItem*>(child)->Entry()->Id(),
                           static_cast<CAppearanceTreeItem*>(child));
        else
            rememberBelow(*child);
    }
}

CCategoryTreeItem::CCategoryTreeItem(const QString& path, const QString& text, const QIcon& icon)
    : QTreeWidgetItem(CategoryItem), m_path(path), m_text(text),
      m_isOther(path.section('/', -1) == QLatin1String("Other"))
{
    setText(0, text);
    setToolTip(0, PlainTip(text));
    setIcon(0, icon);
    setData(0, IdRole, path);
}

bool CCategoryTreeItem::IsBefore(const CCategoryTreeItem& other) const
{
    return m_isOther == other.m_isOther ? m_text < other.m_text : other.m_isOther;
}

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
