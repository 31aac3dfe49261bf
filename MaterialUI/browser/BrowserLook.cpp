#include "BrowserLook.h"

#include "AppearanceLibraryBrowserCtrl.h"

#include <MaterialConstants.h>

const char* const BrowserLook::ControlStyle =
    R"(QTreeWidget{color:black;font: 9pt "simsun";} QTreeWidget::item{height:20px})";

// A selection colour instead of a rule for selected items: the branches in front of an item take it too.
const char* const BrowserLook::TreeStyle = R"(
QTreeWidget { background: white; outline: 0; selection-background-color: #cfe3fa; selection-color: black; }
QTreeWidget::item:hover:!selected { background: #eef4fc; }
)";

const char* const BrowserLook::TableStyle = R"(
QTableWidget { background: white; color: black; outline: 0; font-size: 9pt; }
QTableWidget::item { border: 0; padding-left: 8px; }
QTableWidget::item:hover { background: #eef4fc; }
QTableWidget::item:selected { background: #cfe3fa; color: black; }
QTableWidget::item:focus { border: 1px solid #7fa8d8; padding-left: 7px; }
)";

const char* const BrowserLook::HeaderStyle = R"(
QHeaderView { background: #f4f6f8; font-size: 9pt; }
QHeaderView::section {
    background: #f4f6f8; color: #404850; border: 0; border-bottom: 1px solid #d9dee4; padding: 3px 6px;
}
)";

BrowserLook::CLibraryLook BrowserLook::LookOf(const kiv::String& name, const kiv::CAppearanceLibraryManager& manager)
{
    if (name == SYSTEM_LIBRARY_NAME)
        return {CAppearanceLibraryBrowserCtrl::tr("System Library"), "SL"};
    if (name == FAVORITE_LIBRARY_NAME)
        return {CAppearanceLibraryBrowserCtrl::tr("Favorite Library"), "FL"};
    if (name == CUSTOMER_LIBRARY_NAME)
        return {CAppearanceLibraryBrowserCtrl::tr("All Material"), "CL"};
    return {QString::fromLocal8Bit(manager.LocalizeAppearanceString(name).c_str()), QString()};
}
