#include "AppearanceTable.h"

#include <QHeaderView>
#include <QSet>
#include <QSignalBlocker>

CAppearanceTable::CAppearanceTable(QTableWidget& table) : m_table(table)
{
}

void CAppearanceTable::Fill(const CAppearanceEntries& entries, const QString& path)
{
    CAppearanceEntries shown;
    if (path.isEmpty())
        shown = entries;
    else
        std::copy_if(entries.begin(), entries.end(), std::back_inserter(shown),
                     [&](const CAppearanceEntryPtr& entry) { return entry->IsBelow(path); });
    m_table.setRowCount(0);
    m_table.setRowCount(int(shown.size()));
    {
        // The rows are new to the view anyway, so the cells need not be announced one by one.
        const QSignalBlocker blocker(m_table.model());
        for (std::size_t row = 0; row < shown.size(); ++row)
            setRow(int(row), shown[row]);
    }
    Resort();
    m_table.viewport()->update();
}

void CAppearanceTable::setRow(int row, const CAppearanceEntryPtr& entry)
{
    m_table.setItem(row, PictureColumn, new CAppearanceTableItem(entry, PictureColumn));
    m_table.setItem(row, NameColumn, new CAppearanceTableItem(entry, NameColumn));
}

void CAppearanceTable::Insert(const CAppearanceEntryPtr& entry)
{
    const int row = m_sortColumn == NameColumn ? sortedPosition(entry) : m_table.rowCount();
    m_table.insertRow(row);
    setRow(row, entry);
}

int CAppearanceTable::sortedPosition(const CAppearanceEntryPtr& entry) const
{
    const auto order = Qt::SortOrder(m_sortOrder);
    QMyTableWidgetItem::SetSortOrder(order);
    const CAppearanceTableItem added(entry, NameColumn);
    int first = 0;
    int last = m_table.rowCount();
    while (first < last) {
        const int middle = (first + last) / 2;
        const QTableWidgetItem& item = *m_table.item(middle, NameColumn);
        if (order == Qt::AscendingOrder ? added < item : item < added)
            last = middle;
        else
            first = middle + 1;
    }
    return first;
}

void CAppearanceTable::Replace(int row, const CAppearanceEntryPtr& entry)
{
    setRow(row, entry);
}

void CAppearanceTable::Remove(int row)
{
    m_table.removeRow(row);
}

int CAppearanceTable::RowOf(const CAppearanceEntry& entry) const
{
    return entry.Cell() ? m_table.row(entry.Cell()) : -1;
}

QString CAppearanceTable::IdOf(int row) const
{
    const QTableWidgetItem* item = m_table.item(row, NameColumn);
    return item ? item->data(IdRole).toString() : QString();
}

QStringList CAppearanceTable::SelectedIds() const
{
    QStringList ids;
    for (const QModelIndex& index : m_table.selectionModel()->selectedRows(NameColumn))
        ids.append(index.data(IdRole).toString());
    return ids;
}

void CAppearanceTable::SetCurrentRow(int row)
{
    m_table.setCurrentCell(row, NameColumn, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    m_table.scrollToItem(m_table.item(row, NameColumn));
}

void CAppearanceTable::FocusRow(int row)
{
    const int shown = qMin(row, m_table.rowCount() - 1);
    if (shown < 0)
        return;
    const bool isSingle = m_table.selectionMode() == QAbstractItemView::SingleSelection;
    m_table.setCurrentCell(shown, NameColumn,
                           isSingle ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                                    : QItemSelectionModel::SelectionFlags(QItemSelectionModel::NoUpdate));
}

void CAppearanceTable::SelectClickedRow(int row)
{
    const bool toggles = m_table.selectionMode() == QAbstractItemView::MultiSelection;
    m_table.selectionModel()->select(m_table.model()->index(row, NameColumn),
                                     (toggles ? QItemSelectionModel::Toggle : QItemSelectionModel::ClearAndSelect) |
                                         QItemSelectionModel::Rows);
}

void CAppearanceTable::SelectIds(const QStringList& ids)
{
    const QSet<QString> wanted(ids.begin(), ids.end());
    for (int row = 0; row < m_table.rowCount() && !wanted.isEmpty(); ++row) {
        if (wanted.contains(IdOf(row)))
            m_table.selectionModel()->select(m_table.model()->index(row, NameColumn),
                                             QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
}

void CAppearanceTable::SetInCloud(int row, bool inCloud)
{
    auto* item = static_cast<CAppearanceTableItem*>(m_table.item(row, PictureColumn));
    item->Entry()->SetInCloud(inCloud);
    item->setData(CloudRole, {});  // an own mark would hide the entry's
}

void CAppearanceTable::UpdateRow(int row)
{
    const QAbstractItemModel* model = m_table.model();
    emit m_table.model()->dataChanged(model->index(row, PictureColumn), model->index(row, NameColumn));
}

void CAppearanceTable::FlipSort(int column)
{
    m_sortOrder = m_sortOrder == Qt::DescendingOrder ? Qt::AscendingOrder : Qt::DescendingOrder;
    m_sortColumn = column;
    Resort();
}

void CAppearanceTable::Resort()
{
    if (m_sortColumn < 0)
        return;
    const auto order = Qt::SortOrder(m_sortOrder);
    QMyTableWidgetItem::SetSortOrder(order);
    m_table.sortItems(m_sortColumn, order);
    m_table.horizontalHeader()->setSortIndicator(m_sortColumn, order);
    m_table.horizontalHeader()->setSortIndicatorShown(true);
}
