#pragma once

#include <QMenu>

#include <array>
#include <bitset>
#include <memory>

class CAppearanceLibraryBrowserCtrl;

/// The context menus of a browser, and the keys that do the same while its table or tree has the keyboard focus. Their
/// actions go to the browser's slots.
class CAppearanceMenus {
public:
    /// In the order of the menu.
    enum EnAction {
        Download,
        Apply,
        Copy,
        AddFavorite,
        TypeChange,
        Rename,
        Delete,
        Remove,
        Export,
        Import,
        ActionCount
    };
    using Offer = std::bitset<ActionCount>;

    explicit CAppearanceMenus(CAppearanceLibraryBrowserCtrl& browser);

    /// What the menu shows and the keys do from now on; the rest is hidden and its keys do nothing.
    void SetOffer(const Offer& offer);
    /// Opens the menu that fits, without waiting for the choice. One without anything to choose stays closed.
    void ShowAppearanceMenu(const QPoint& globalPosition);
    void ShowTreeMenu(bool canChooseLibrary, const QPoint& globalPosition);

    bool HasShortcut(const QKeySequence& keys) const;
    const QMenu& AppearanceMenu() const { return *m_appearanceMenu; }

private:
    void addAppearanceMenu(CAppearanceLibraryBrowserCtrl& browser);
    void addKeys(CAppearanceLibraryBrowserCtrl& browser);
    void addTreeMenu(CAppearanceLibraryBrowserCtrl& browser);

    QMenu* m_appearanceMenu;
    QMenu* m_treeMenu;
    std::array<QAction*, ActionCount> m_actions{};
    QAction* m_chooseLibrary = nullptr;
};
