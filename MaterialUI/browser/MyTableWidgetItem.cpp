#include "MyTableWidgetItem.h"

namespace {

Qt::SortOrder s_sortOrder = Qt::AscendingOrder;

bool isPinned(const QString& text)
{
    static const QString pinned = QStringLiteral("云端材质库");
    return text == pinned;
}

}  // namespace

void QMyTableWidgetItem::SetSortOrder(Qt::SortOrder order)
{
    s_sortOrder = order;
}

Qt::SortOrder QMyTableWidgetItem::GetSortOrder()
{
    return s_sortOrder;
}

bool QMyTableWidgetItem::operator<(const QTableWidgetItem& other) const
{
    const QString own = text();
    const QString others = other.text();
    if (isPinned(own) != isPinned(others))
        return isPinned(own) == (s_sortOrder == Qt::AscendingOrder);
    return own < others;
}
