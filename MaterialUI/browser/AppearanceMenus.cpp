#include "AppearanceMenus.h"

#include "AppearanceLibraryBrowserCtrl.h"

#include <QTableWidget>
#include <QTreeWidget>

namespace {

struct ActionKind {
    const char* text;
    const char* slot;
    int key;  ///< 0 for none
};

const ActionKind s_kinds[CAppearanceMenus::ActionCount] = {
    {QT_TRANSLATE_NOOP("CAppearanceLibraryBrowserCtrl", "Download"), SLOT(OnMenuDownloadAppearance()), 0},
    {QT_TRANSLATE_NOOP("CAppearanceLibraryBrowserCtrl", "Apply"), SLOT(OnMenuApplyAppearance()), Qt::Key_Enter},
    {QT_TRANSLATE_NOOP("CAppearanceLibraryBrowserCtrl", "copy"), SLOT(OnMenuCopyAppearance()), Qt::CTRL + Qt::Key_C},
    {QT_TRANSLATE_NOOP("CAppearanceLibraryBrowserCtrl", "addFavorite"), SLOT(OnMenuAddFavoriteAppearance()),
     Qt::CTRL + Qt::Key_D},
    {QT_TRANSLATE_NOOP("CAppearanceLibraryBrowserCtrl", "typeChange"), SLOT(OnMenuAppearanceTypeChange()), 0},
    {QT_TRANSLATE_NOOP("CAppearanceLibraryBrowserCtrl", "Rename"), SLOT(OnMenuRenameAppearance()), Qt::Key_F2},
    {QT_TRANSLATE_NOOP("CAppearanceLibraryBrowserCtrl", "delete"), SLOT(OnMenuDeleteAppearance()), Qt::Key_Delete},
    {QT_TRANSLATE_NOOP("CAppearanceLibraryBrowserCtrl", "Remove"), SLOT(OnMenuRemoveAppearance()), Qt::Key_Delete},
    {QT_TRANSLATE_NOOP("CAppearanceLibraryBrowserCtrl", "Export..."), SLOT(OnMenuExportAppearances()),
     Qt::CTRL + Qt::Key_E},
    {QT_TRANSLATE_NOOP("CAppearanceLibraryBrowserCtrl", "Import..."), SLOT(OnMenuImportAppearances()),
     Qt::CTRL + Qt::Key_I},
};

/// Whether a line is drawn before the action, where something is shown above it.
bool beginsGroup(int action)
{
    return action == CAppearanceMenus::Copy || action == CAppearanceMenus::Export;
}

}  // namespace

CAppearanceMenus::CAppearanceMenus(CAppearanceLibraryBrowserCtrl& browser)
    : m_appearanceMenu(new QMenu(&browser)), m_treeMenu(new QMenu(&browser))
{
    addAppearanceMenu(browser);
    addKeys(browser);
    addTreeMenu(browser);
}

void CAppearanceMenus::addAppearanceMenu(CAppearanceLibraryBrowserCtrl& browser)
{
    for (int i = 0; i < ActionCount; ++i) {
        if (beginsGroup(i))
            m_appearanceMenu->addSeparator();
        m_actions[i] =
            m_appearanceMenu->addAction(CAppearanceLibraryBrowserCtrl::tr(s_kinds[i].text), &browser, s_kinds[i].slot);
    }
    m_appearanceMenu->setDefaultAction(m_actions[Apply]);
}

// Return and Enter stay with the views, which pass them on to a dialog's button; the menu only shows that there is one.
void CAppearanceMenus::addKeys(CAppearanceLibraryBrowserCtrl& browser)
{
    for (int i = 0; i < ActionCount; ++i) {
        if (s_kinds[i].key == 0)
            continue;
        m_actions[i]->setShortcut(s_kinds[i].key);
        m_actions[i]->setShortcutContext(Qt::WidgetShortcut);
        m_actions[i]->setShortcutVisibleInContextMenu(true);
        if (i == Apply)
            continue;
        browser.GetTableWidget()->addAction(m_actions[i]);
        browser.GetTreeWidget()->addAction(m_actions[i]);
    }
    SetOffer({});
}

void CAppearanceMenus::addTreeMenu(CAppearanceLibraryBrowserCtrl& browser)
{
    QTreeWidget* tree = browser.GetTreeWidget();
    m_treeMenu->addAction(CAppearanceLibraryBrowserCtrl::tr("Expand All"), tree, SLOT(expandAll()));
    m_treeMenu->addAction(CAppearanceLibraryBrowserCtrl::tr("Collapse All"), tree, SLOT(collapseAll()));
    m_treeMenu->addSeparator();
    m_chooseLibrary = m_treeMenu->addAction(CAppearanceLibraryBrowserCtrl::tr("Choose Library..."), &browser,
                                            SLOT(OnMenuChooseLibrary()));
}

// Two actions may have the same key, so what is not offered is disabled too: an ambiguous key would do nothing.
void CAppearanceMenus::SetOffer(const Offer& offer)
{
    for (int i = 0; i < ActionCount; ++i) {
        m_actions[i]->setVisible(offer[i]);
        m_actions[i]->setEnabled(offer[i]);
    }
}

bool CAppearanceMenus::HasShortcut(const QKeySequence& keys) const
{
    return std::any_of(m_actions.begin(), m_actions.end(),
                       [&](const QAction* action) { return !keys.isEmpty() && action->shortcut() == keys; });
}

void CAppearanceMenus::ShowAppearanceMenu(const QPoint& globalPosition)
{
    if (std::any_of(m_actions.begin(), m_actions.end(), [](const QAction* action) { return action->isVisible(); }))
        m_appearanceMenu->popup(globalPosition);
}

void CAppearanceMenus::ShowTreeMenu(bool canChooseLibrary, const QPoint& globalPosition)
{
    m_chooseLibrary->setVisible(canChooseLibrary);
    m_treeMenu->popup(globalPosition);
}
