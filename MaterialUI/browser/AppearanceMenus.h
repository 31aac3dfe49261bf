#pragma once

#include <QMenu>

#include <memory>

class CAppearanceLibraryBrowserCtrl;

/// The context menus of a browser. Their actions go to the browser's slots.
class CAppearanceMenus {
public:
    /// What may be done with the appearances that a menu is opened for.
    struct Offer {
        bool isFavorite = false;
        bool isEditable = false;      ///< in a library of the user's own
        bool isDownloadable = false;  ///< in the cloud and not complete here
    };

    explicit CAppearanceMenus(CAppearanceLibraryBrowserCtrl& browser);

    /// Opens the menu that fits, without waiting for the choice.
    void ShowAppearanceMenu(const Offer& offer, const QPoint& globalPosition);
    void ShowTreeMenu(bool canChooseLibrary, const QPoint& globalPosition);

private:
    void addAppearanceMenu(CAppearanceLibraryBrowserCtrl& browser);
    void addTreeMenu(CAppearanceLibraryBrowserCtrl& browser);

    QMenu* m_appearanceMenu;
    QMenu* m_removeMenu;
    QMenu* m_downloadMenu;
    QMenu* m_treeMenu;
    QAction* m_delete = nullptr;
    QAction* m_typeChange = nullptr;
    QAction* m_remove = nullptr;
    QAction* m_chooseLibrary = nullptr;
};
