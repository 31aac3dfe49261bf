#include "AppearanceTableItem.h"

namespace {

constexpr int AppearanceCell = QTableWidgetItem::UserType + 1;

}  // namespace

CAppearanceTableItem::CAppearanceTableItem(CAppearanceEntryPtr entry, EnTableColumn column)
    : QMyTableWidgetItem(AppearanceCell), m_entry(std::move(entry)), m_column(column)
{
    if (column == PictureColumn)
        setFlags(Qt::ItemIsEnabled);
    else
        m_entry->SetCell(this);
}

CAppearanceTableItem::~CAppearanceTableItem()
{
    if (m_entry->Cell() == this)
        m_entry->SetCell(nullptr);
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

void CAppearanceTableItem::setData(int role, const QVariant& value)
{
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        m_ownText = value.isValid() ? std::optional<QString>(value.toString()) : std::nullopt;
    QMyTableWidgetItem::setData(role, value);
}

const QString& CAppearanceTableItem::shownText() const
{
    static const QString none;
    if (m_ownText)
        return *m_ownText;
    return m_column == NameColumn ? m_entry->Name() : none;
}

bool CAppearanceTableItem::operator<(const QTableWidgetItem& other) const
{
    return other.type() == AppearanceCell
               ? IsLess(shownText(), static_cast<const CAppearanceTableItem&>(other).shownText())
               : QMyTableWidgetItem::operator<(other);
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
