#pragma once

#include <AppearanceLibraryBrowserCtrl.h>
#include <LibraryFixture.h>

#include <QMenu>
#include <QStringList>
#include <QTableWidget>
#include <QTreeWidget>

#include <memory>

/// Small libraries in memory.
class BrowserFixture {
public:
    struct Sample {
        QString id;
        QString name;
        QString category;
        QString tags;
    };

    kiv::CAppearanceLibraryPtr MakeLibrary(const QString& name, const QList<Sample>& samples);
    kiv::CAppearanceInstancePtr MakeAppearance(const Sample& sample) const;
    /// A brick and a wood category with two each, a nested one, and "Other".
    static QList<Sample> Samples();

    /// A shown browser, 320 x 480.
    std::unique_ptr<CAppearanceLibraryBrowserCtrl> MakeBrowser(AppearanceLibraryProvider* provider = nullptr);
    /// One that shows a new library.
    std::unique_ptr<CAppearanceLibraryBrowserCtrl> MakeBrowserOf(const QString& libraryName,
                                                                 const QList<Sample>& samples = Samples());

    LibraryFixture files;
    kiv::CAppearanceLibraryManager& manager = files.manager();
};

/// What a browser announced since the last take(), but for selections: "copy b", "remove a", "export a b",
/// "import /x.ggm", ...
class Announcements {
public:
    explicit Announcements(CAppearanceLibraryBrowserCtrl& browser);
    QString take() { return std::exchange(m_texts, {}).join(", "); }

private:
    QStringList m_texts;
};

/// Ids that OnSelectAppearance announced since the last take().
class Selections {
public:
    explicit Selections(CAppearanceLibraryBrowserCtrl& browser);
    QStringList take() { return std::exchange(m_ids, {}); }

private:
    QStringList m_ids;
};

QStringList RowIds(const CAppearanceLibraryBrowserCtrl& browser);
/// The texts of the tree in tree order, each level indented by one blank.
QStringList TreeTexts(const CAppearanceLibraryBrowserCtrl& browser);
/// The tree item whose Qt::UserRole text is this.
QTreeWidgetItem* TreeItem(const CAppearanceLibraryBrowserCtrl& browser, const QString& userText);
/// Presses and releases the left button in the middle of an item.
void ClickTree(const CAppearanceLibraryBrowserCtrl& browser, QTreeWidgetItem* item);
void ClickCell(const CAppearanceLibraryBrowserCtrl& browser, int row, int column);

/// The context menu that is open, or null.
QMenu* OpenMenu();
/// What may be chosen in the menu, each with its key.
QStringList Offered(const QMenu* menu);
void RightClick(QAbstractScrollArea* view, const QPoint& position);
void RightClickRow(const CAppearanceLibraryBrowserCtrl& browser, int row);
/// Clicks the action in the open menu.
void Choose(const QString& text);
