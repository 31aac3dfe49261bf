#include "AppearanceEntry.h"

#include "AppearanceLibraryBrowserCtrl.h"
#include "AppearancePreviewerQt.h"
#include "ItemRoles.h"

#include <QTableWidgetItem>

namespace {

constexpr int MaxTipTags = 200;

QString toText(const kiv::String& narrow)
{
    return QString::fromLocal8Bit(narrow.data(), int(narrow.size()));
}

QString shortened(const QString& text)
{
    return text.size() > MaxTipTags ? text.left(MaxTipTags) + QChar(0x2026) : text;
}

}  // namespace

CAppearanceEntry::CAppearanceEntry(kiv::CAppearanceLibraryManager& manager, const kiv::String& id,
                                   kiv::CAppearanceInstancePtr appearance)
    : m_manager(&manager), m_appearance(std::move(appearance)), m_id(toText(id))
{
    Refresh();
}

void CAppearanceEntry::Refresh()
{
    m_name = toText(m_manager->LocalizeAppearanceString(m_appearance->GetName()));
    m_inCloud = m_appearance->GetCloudFlag();
    m_previewed = false;
}

bool CAppearanceEntry::IsBelow(const QString& path) const
{
    return path.isEmpty() ||
           (m_category.startsWith(path) && (m_category.size() == path.size() || m_category[path.size()] == '/'));
}

QString CAppearanceEntry::ToolTip() const
{
    const QString type = toText(m_manager->LocalizeAppearanceString(m_appearance->GetTemplateName()));
    const QString tags = toText(m_appearance->GetTags());
    QString tip = "<b>" + m_name.toHtmlEscaped() + "</b>";
    if (!type.isEmpty())
        tip += "<br>" + CAppearanceLibraryBrowserCtrl::tr("Type: %1").arg(type.toHtmlEscaped());
    if (!tags.isEmpty())
        tip += "<br>" + CAppearanceLibraryBrowserCtrl::tr("Tags: %1").arg(shortened(tags).toHtmlEscaped());
    return tip;
}

// Into an item of its own: setting the roles of an item in a table would announce a change while the cell is painted.
void CAppearanceEntry::preview() const
{
    if (m_previewed)
        return;
    QTableWidgetItem scratch;
    CAppearancePreviewerQt previewer(&scratch);
    m_manager->Preview(m_appearance, previewer);
    m_background = scratch.data(Qt::BackgroundRole);
    m_texture = scratch.data(TextureRole);
    m_previewed = true;
}

const QVariant& CAppearanceEntry::Background() const
{
    preview();
    return m_background;
}

const QVariant& CAppearanceEntry::Texture() const
{
    preview();
    return m_texture;
}

bool CAppearanceEntry::Contains(const QString& text) const
{
    return m_name.contains(text, Qt::CaseInsensitive) ||
           toText(m_appearance->GetTags()).contains(text, Qt::CaseInsensitive);
}

QString CleanCategoryPath(const QString& path)
{
    return path.split('/', Qt::SkipEmptyParts).join('/');
}
