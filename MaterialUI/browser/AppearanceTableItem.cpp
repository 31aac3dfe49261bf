#include "AppearanceTableItem.h"

CAppearanceTableItem::CAppearanceTableItem(CAppearanceEntryPtr entry, EnTableColumn column)
    : m_entry(std::move(entry)), m_column(column)
{
    if (column == PictureColumn)
        setFlags(Qt::ItemIsEnabled);
}

QVariant CAppearanceTableItem::data(int role) const
{
    const QVariant own = QMyTableWidgetItem::data(role);
    if (own.isValid())
        return own;
    switch (role) {
    case IdRole:
        return m_entry->Id();
    case Qt::ToolTipRole:
        return m_entry->ToolTip();
    case Qt::AccessibleTextRole:
        return m_entry->Name();
    default:
        return m_column == PictureColumn ? pictureData(role) : nameData(role);
    }
}

QVariant CAppearanceTableItem::pictureData(int role) const
{
    switch (role) {
    case CloudRole:
        return m_entry->IsInCloud();
    case TextureRole:
        return m_entry->Texture();
    case Qt::BackgroundRole:
        return m_entry->Background();
    default:
        return {};
    }
}

QVariant CAppearanceTableItem::nameData(int role) const
{
    return role == Qt::DisplayRole || role == Qt::EditRole ? QVariant(m_entry->Name()) : QVariant();
}
