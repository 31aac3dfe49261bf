#pragma once

#include <QTableWidgetItem>

/// A cell of the appearance table. Cells compare by their texts, but the row "云端材质库" comes first in either order.
class QMyTableWidgetItem : public QTableWidgetItem {
public:
    using QTableWidgetItem::QTableWidgetItem;

    bool operator<(const QTableWidgetItem& other) const override;

    /// The order in which tables are sorted now, shared by all: the last browser that sorted decides. It has to be
    /// known to the comparison since descending sorts ask it with the items exchanged.
    static void SetSortOrder(Qt::SortOrder order);
    static Qt::SortOrder GetSortOrder();

protected:
    /// The comparison of two cells with these texts.
    static bool IsLess(const QString& own, const QString& other);
};
