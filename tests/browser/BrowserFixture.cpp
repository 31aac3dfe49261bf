#include "BrowserFixture.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QTreeWidgetItemIterator>
#include <QtTest>

namespace {

QString depthOf(const QTreeWidgetItem* item)
{
    QString blanks;
    for (item = item->parent(); item; item = item->parent())
        blanks += ' ';
    return blanks;
}

}  // namespace

kiv::CAppearanceInstancePtr BrowserFixture::MakeAppearance(const Sample& sample) const
{
    const auto appearance =
        manager.CreateAppearanceInstance(manager.FindTemplate("Generic"), sample.name.toStdString());
    appearance->SetId(sample.id.toStdString());
    appearance->SetCategory(sample.category.toStdString());
    appearance->SetEditType(1);
    appearance->SetTags(sample.tags.toStdString());
    appearance->SetDiffuse({0.5F, 0.25F, 1, 1});
    return appearance;
}

kiv::CAppearanceLibraryPtr BrowserFixture::MakeLibrary(const QString& name, const QList<Sample>& samples)
{
    const auto library = std::make_shared<kiv::CAppearanceLibrary>();
    library->SetName(name.toStdString());
    library->SetId(name.toStdString());
    for (const Sample& sample : samples)
        library->AddInstance(MakeAppearance(sample));
    return library;
}

QList<BrowserFixture::Sample> BrowserFixture::Samples()
{
    return {{"a", "Walnut", "Wood", "dark 胡桃木"},  {"b", "Red brick", "Brick", "facade 红砖"},
            {"c", "Cork", "Other", "floor"},         {"d", "Oak", "Wood/Hard", "light"},
            {"e", "Glazed brick", "Brick/", "tile"}, {"f", "Zebrano", "Wood//Hard/Rare", ""}};
}

std::unique_ptr<CAppearanceLibraryBrowserCtrl> BrowserFixture::MakeBrowser(AppearanceLibraryProvider* provider)
{
    auto browser = std::make_unique<CAppearanceLibraryBrowserCtrl>(manager, nullptr, provider, false);
    browser->resize(320, 480);
    browser->show();
    QCoreApplication::processEvents();
    return browser;
}

std::unique_ptr<CAppearanceLibraryBrowserCtrl> BrowserFixture::MakeBrowserOf(const QString& libraryName,
                                                                             const QList<Sample>& samples)
{
    auto browser = MakeBrowser();
    browser->AddLibrary(MakeLibrary(libraryName, samples));
    return browser;
}

Selections::Selections(CAppearanceLibraryBrowserCtrl& browser)
{
    QObject::connect(&browser, &CAppearanceLibraryBrowserCtrl::OnSelectAppearance,
                     [this](const kiv::CAppearanceInstancePtr& appearance) {
                         m_ids.append(QString::fromStdString(appearance->GetId()));
                     });
}

Announcements::Announcements(CAppearanceLibraryBrowserCtrl& browser)
{
    using Browser = CAppearanceLibraryBrowserCtrl;
    const auto note = [this](const char* what) {
        return [this, what](const kiv::CAppearanceInstancePtr& appearance) {
            m_texts.append(QString("%1 %2").arg(what, QString::fromStdString(appearance->GetId())));
        };
    };
    QObject::connect(&browser, &Browser::OnCopyandAddApperance, note("copy"));
    QObject::connect(&browser, &Browser::OnDeleteApperance, note("delete"));
    QObject::connect(&browser, &Browser::OnRemoveApperance, note("remove"));
    QObject::connect(&browser, &Browser::OnApplyAppearance, note("apply"));
    QObject::connect(&browser, &Browser::OnRenameAppearance, note("rename"));
    QObject::connect(&browser, &Browser::OnAddFavoriteAppearance, note("favourite"));
    QObject::connect(&browser, &Browser::OnAppearanceTypeChanged, note("type"));
    QObject::connect(&browser, &Browser::OnExportAppearances, [this](const Browser::Appearances& appearances) {
        QString text = "export";
        for (const kiv::CAppearanceInstancePtr& appearance : appearances)
            text += " " + QString::fromStdString(appearance->GetId());
        m_texts.append(text);
    });
    QObject::connect(&browser, &Browser::OnImportAppearances,
                     [this](const QStringList& files) { m_texts.append("import " + files.join(" ")); });
}

QStringList RowIds(const CAppearanceLibraryBrowserCtrl& browser)
{
    QStringList ids;
    for (int row = 0; row < browser.GetTableWidget()->rowCount(); ++row)
        ids.append(browser.GetTableWidget()->item(row, 1)->data(Qt::UserRole).toString());
    return ids;
}

QStringList TreeTexts(const CAppearanceLibraryBrowserCtrl& browser)
{
    QStringList texts;
    for (QTreeWidgetItemIterator it(browser.GetTreeWidget()); *it; ++it)
        texts.append(depthOf(*it) + (*it)->text(0));
    return texts;
}

QTreeWidgetItem* TreeItem(const CAppearanceLibraryBrowserCtrl& browser, const QString& userText)
{
    for (QTreeWidgetItemIterator it(browser.GetTreeWidget()); *it; ++it) {
        if ((*it)->data(0, Qt::UserRole).toString() == userText)
            return *it;
    }
    return nullptr;
}

void ClickTree(const CAppearanceLibraryBrowserCtrl& browser, QTreeWidgetItem* item)
{
    QTreeWidget* tree = browser.GetTreeWidget();
    tree->scrollToItem(item);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(item).center());
}

void ClickCell(const CAppearanceLibraryBrowserCtrl& browser, int row, int column)
{
    QTableWidget* table = browser.GetTableWidget();
    const QRect rect = table->visualItemRect(table->item(row, column));
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, rect.center());
}

QMenu* OpenMenu()
{
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

QStringList Offered(const QMenu* menu)
{
    QStringList texts;
    for (const QAction* action : menu ? menu->actions() : QList<QAction*>()) {
        if (action->isVisible() && action->isEnabled() && !action->isSeparator())
            texts.append((action->text() + " " + action->shortcut().toString()).trimmed());
    }
    return texts;
}

void RightClick(QAbstractScrollArea* view, const QPoint& position)
{
    QTest::mouseClick(view->viewport(), Qt::RightButton, {}, position);
    QContextMenuEvent event(QContextMenuEvent::Mouse, position, view->viewport()->mapToGlobal(position));
    QApplication::sendEvent(view->viewport(), &event);
}

void RightClickRow(const CAppearanceLibraryBrowserCtrl& browser, int row)
{
    QTableWidget* table = browser.GetTableWidget();
    RightClick(table, table->visualItemRect(table->item(row, 1)).center());
}

void Choose(const QString& text)
{
    QMenu* menu = OpenMenu();
    QVERIFY(menu);
    for (QAction* action : menu->actions()) {
        if (action->text() == text) {
            QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
            return;
        }
    }
    QFAIL(qPrintable("no action " + text));
}
