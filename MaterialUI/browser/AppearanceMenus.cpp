#include "AppearanceMenus.h"

#include "AppearanceLibraryBrowserCtrl.h"

#include <QTreeWidget>

CAppearanceMenus::CAppearanceMenus(CAppearanceLibraryBrowserCtrl& browser)
    : m_appearanceMenu(new QMenu(&browser)), m_removeMenu(new QMenu(&browser)), m_downloadMenu(new QMenu(&browser)),
      m_treeMenu(new QMenu(&browser))
{
    addAppearanceMenu(browser);
    m_remove =
        m_removeMenu->addAction(CAppearanceLibraryBrowserCtrl::tr("Remove"), &browser, SLOT(OnMenuRemoveAppearance()));
    m_downloadMenu->addAction(CAppearanceLibraryBrowserCtrl::tr("Download"), &browser,
                              SLOT(OnMenuDownloadAppearance()));
    m_downloadMenu->addAction(m_remove);
    addTreeMenu(browser);
}

void CAppearanceMenus::addAppearanceMenu(CAppearanceLibraryBrowserCtrl& browser)
{
    m_appearanceMenu->addAction(CAppearanceLibraryBrowserCtrl::tr("copy"), &browser, SLOT(OnMenuCopyAppearance()));
    m_delete = m_appearanceMenu->addAction(CAppearanceLibraryBrowserCtrl::tr("delete"), &browser,
                                           SLOT(OnMenuDeleteAppearance()));
    m_typeChange = m_appearanceMenu->addAction(CAppearanceLibraryBrowserCtrl::tr("typeChange"), &browser,
                                               SLOT(OnMenuAppearanceTypeChange()));
    m_appearanceMenu->addAction(CAppearanceLibraryBrowserCtrl::tr("addFavorite"), &browser,
                                SLOT(OnMenuAddFavoriteAppearance()));
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

void CAppearanceMenus::ShowAppearanceMenu(const Offer& offer, const QPoint& globalPosition)
{
    m_delete->setEnabled(offer.isEditable);
    m_typeChange->setEnabled(offer.isEditable);
    m_remove->setVisible(offer.isFavorite);
    QMenu* menu = offer.isDownloadable ? m_downloadMenu : offer.isFavorite ? m_removeMenu : m_appearanceMenu;
    menu->popup(globalPosition);
}

void CAppearanceMenus::ShowTreeMenu(bool canChooseLibrary, const QPoint& globalPosition)
{
    m_chooseLibrary->setVisible(canChooseLibrary);
    m_treeMenu->popup(globalPosition);
}
