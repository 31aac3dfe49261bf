#pragma once

#include "AppearanceTableItem.h"

#include <QTableWidget>

/// The browser's work on its table of appearances. Knows nothing of libraries.
class CAppearanceTable {
public:
    /// Borrowed.
    explicit CAppearanceTable(QTableWidget& table);

    /// Shows those of the entries whose category is the path or below it, in the order given or, once the user sorted,
    /// in the user's.
    void Fill(const CAppearanceEntries& entries, const QString& path);
    /// Adds a row: at the end or, once the user sorted, where it belongs.
    void Insert(const CAppearanceEntryPtr& entry);
    /// Shows another entry in the row, which stays current and selected.
    void Replace(int row, const CAppearanceEntryPtr& entry);
    void Remove(int row);

    int RowOf(const CAppearanceEntry& entry) const;  ///< -1 when it has none
    QString IdOf(int row) const;                     ///< empty when there is no such row
    QStringList SelectedIds() const;

    /// Makes the row the current one and scrolls to it.
    void SetCurrentRow(int row);
    /// Makes the row the current one, or the last row where there are not so many. Where several may be selected it is
    /// not selected.
    void FocusRow(int row);
    /// Selects the row as a click on its name does. A click on its picture, which cannot be selected, clears the
    /// selection instead.
    void SelectClickedRow(int row);
    void SelectIds(const QStringList& ids);
    void SetInCloud(int row, bool inCloud);
    /// Paints the row anew, after its entry changed.
    void UpdateRow(int row);

    /// Sorts by the column, the other way round each time. The first time sorts ascending.
    void FlipSort(int column);
    /// Sorts again as the user sorted last, if so.
    void Resort();

private:
    void setRow(int row, const CAppearanceEntryPtr& entry);
    int sortedPosition(const CAppearanceEntryPtr& entry) const;

    QTableWidget& m_table;
    int m_sortOrder = Qt::DescendingOrder;
    int m_sortColumn = -1;
};
