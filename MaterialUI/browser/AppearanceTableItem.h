#pragma once

#include "AppearanceEntry.h"
#include "ItemRoles.h"
#include "MyTableWidgetItem.h"

#include <optional>

/// A cell of an appearance's row, answering from the entry that the row shares with the tree item. What is set on the
/// item itself goes first.
class CAppearanceTableItem : public QMyTableWidgetItem {
public:
    CAppearanceTableItem(CAppearanceEntryPtr entry, EnTableColumn column);

    ~CAppearanceTableItem() override;
    CAppearanceTableItem(const CAppearanceTableItem&) = delete;
    CAppearanceTableItem& operator=(const CAppearanceTableItem&) = delete;

    QVariant data(int role) const override;
    void setData(int role, const QVariant& value) override;
    /// Compares without making a variant of each text, which is most of the time of sorting.
    bool operator<(const QTableWidgetItem& other) const override;

    const CAppearanceEntryPtr& Entry() const { return m_entry; }

private:
    QVariant pictureData(int role) const;
    QVariant nameData(int role) const;

    const QString& shownText() const;

    CAppearanceEntryPtr m_entry;
    std::optional<QString> m_ownText;
    EnTableColumn m_column;
};
