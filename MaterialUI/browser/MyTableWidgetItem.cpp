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

bool QMyTableWidgetItem::IsLess(const QString& own, const QString& other)
{
    const bool pinned = isPinned(own);
    if (pinned != isPinned(other))
        return pinned == (s_sortOrder == Qt::AscendingOrder);
    return own < other;
}

bool QMyTableWidgetItem::operator<(const QTableWidgetItem& other) const
{
    return IsLess(text(), other.text());
}
