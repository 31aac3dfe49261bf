#pragma once

#include "AppearanceEntry.h"
#include "ItemRoles.h"
#include "MyTableWidgetItem.h"

/// A cell of an appearance's row, answering from the entry that the row shares with the tree item. What is set on the
/// item itself goes first.
class CAppearanceTableItem : public QMyTableWidgetItem {
public:
    CAppearanceTableItem(CAppearanceEntryPtr entry, EnTableColumn column);

    QVariant data(int role) const override;

    const CAppearanceEntryPtr& Entry() const { return m_entry; }

private:
    QVariant pictureData(int role) const;
    QVariant nameData(int role) const;

    CAppearanceEntryPtr m_entry;
    EnTableColumn m_column;
};
