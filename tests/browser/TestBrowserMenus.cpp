// The context menus, the dialogs that their actions open, and what is announced in the end.
#include "BrowserFixture.h"
#include "MaterialTest.h"

#include <ChooseLibraryDlg.h>
#include <ChooseTypeDlg.h>
#include <FavoriteCategoryDlg.h>

#include <QApplication>
#include <QButtonGroup>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDialogButtonBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>
#include <QTranslator>

namespace {

QMenu* openMenu()
{
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

/// What may be chosen in the open menu.
QStringList offered(const QMenu* menu)
{
    QStringList texts;
    for (const QAction* action : menu ? menu->actions() : QList<QAction*>()) {
        if (action->isVisible() && action->isEnabled() && !action->isSeparator())
            texts.append(action->text());
    }
    return texts;
}

void rightClick(QAbstractScrollArea* view, const QPoint& position)
{
    QTest::mouseClick(view->viewport(), Qt::RightButton, {}, position);
    QContextMenuEvent event(QContextMenuEvent::Mouse, position, view->viewport()->mapToGlobal(position));
    QApplication::sendEvent(view->viewport(), &event);
}

void rightClickRow(const CAppearanceLibraryBrowserCtrl& browser, int row)
{
    QTableWidget* table = browser.GetTableWidget();
    rightClick(table, table->visualItemRect(table->item(row, 1)).center());
}

void choose(const QString& text)
{
    QMenu* menu = openMenu();
    QVERIFY(menu);
    for (QAction* action : menu->actions()) {
        if (action->text() == text) {
            QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
            return;
        }
    }
    QFAIL(qPrintable("no action " + text));
}

template <typename Dialog>
Dialog* openDialog()
{
    return qobject_cast<Dialog*>(QApplication::activeModalWidget());
}

void press(QDialog* dialog, QDialogButtonBox::StandardButton button)
{
    QTest::mouseClick(dialog->findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
}

}  // namespace

class TestBrowserMenus : public MaterialTest {
    Q_OBJECT

private slots:
    void menuFitsTheLibrary()
    {
        const std::pair<const char*, QStringList> cases[] = {
            {"System Library", {"copy", "addFavorite"}},
            {"Customer Library", {"copy", "delete", "typeChange", "addFavorite"}},
            {"Favorite Library", {"Remove"}}};
        for (const auto& [name, actions] : cases) {
            const auto browser = m_fixture.MakeBrowserOf(name);
            rightClickRow(*browser, 1);
            QCOMPARE(offered(openMenu()), actions);
            openMenu()->close();
            rightClick(browser->GetTableWidget(), browser->GetTableWidget()->viewport()->rect().bottomRight());
            QVERIFY(!openMenu());
            browser->ShowAppearanceMenu(false);
            rightClickRow(*browser, 1);
            QVERIFY(!openMenu());
        }
    }

    void actionsAnnounceTheAppearance()
    {
        const auto browser = m_fixture.MakeBrowserOf("Customer Library");
        QStringList announced;
        connect(browser.get(), &CAppearanceLibraryBrowserCtrl::OnCopyandAddApperance,
                [&](const kiv::CAppearanceInstancePtr& appearance) {
                    announced.append("copy " + QString::fromStdString(appearance->GetId()));
                });
        connect(browser.get(), &CAppearanceLibraryBrowserCtrl::OnDeleteApperance,
                [&](kiv::CAppearanceInstancePtr& appearance) {
                    announced.append("delete " + QString::fromStdString(appearance->GetId()));
                });
        rightClickRow(*browser, 1);
        choose("copy");
        rightClickRow(*browser, 2);
        choose("delete");
        QCOMPARE(announced, QStringList({"copy b", "delete c"}));
    }

    void removeTakesAllSelected()
    {
        const auto browser = m_fixture.MakeBrowserOf("Favorite Library");
        const auto library = browser->GetCurrentLibrary();
        connect(browser.get(), &CAppearanceLibraryBrowserCtrl::OnRemoveApperance,
                [&](kiv::CAppearanceInstancePtr& appearance) {
                    library->DeleteInstance(appearance->GetId());
                    browser->UpdateLibrary(appearance, false);
                });
        ClickCell(*browser, 0, 1);
        ClickCell(*browser, 2, 1);
        rightClickRow(*browser, 2);
        choose("Remove");
        QCOMPARE(RowIds(*browser), QStringList({"b", "d", "e", "f"}));
        // A row that is not selected goes alone.
        ClickCell(*browser, 0, 1);
        rightClickRow(*browser, 3);
        choose("Remove");
        QCOMPARE(RowIds(*browser), QStringList({"b", "d", "e"}));
    }

    void downloadIsOfferedForWhatIsOnlyInTheCloud()
    {
        const auto library = m_fixture.MakeLibrary("Favorite Library", BrowserFixture::Samples());
        const kiv::CAppearanceInstancePtr oak = library->FindInstance("d");
        oak->GetDiffuseTexture()->SetTextureFile("UserLib Textures\\nowhere");
        oak->SetCloudFlag(true);
        const auto browser = m_fixture.MakeBrowser();
        browser->AddLibrary(library);
        QSignalSpy downloads(browser.get(), &CAppearanceLibraryBrowserCtrl::OnDownloadAppearance);
        rightClickRow(*browser, 3);
        QCOMPARE(offered(openMenu()), QStringList({"Download", "Remove"}));
        choose("Download");
        QCOMPARE(downloads.size(), 1);
        QCOMPARE(downloads[0][0].toString(), QString("d"));
    }

    void menuKeyOpensTheMenuOfTheRow()
    {
        const auto browser = m_fixture.MakeBrowserOf("Customer Library");
        browser->SelectTableItem("c");
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1));
        QApplication::sendEvent(browser->GetTableWidget(), &event);
        QVERIFY(openMenu());
        const QRect row = browser->GetTableWidget()->visualItemRect(browser->GetTableWidget()->item(2, 1));
        QVERIFY(row.contains(browser->GetTableWidget()->viewport()->mapFromGlobal(openMenu()->pos())));
        openMenu()->close();
        QCOMPARE(browser->GetCurSel(), QString("c"));
    }

    void typeIsAskedFor()
    {
        const auto browser = m_fixture.MakeBrowserOf("Customer Library");
        QStringList announced;
        connect(browser.get(), &CAppearanceLibraryBrowserCtrl::OnAppearanceTypeChanged,
                [&](kiv::CAppearanceInstancePtr& appearance, const kiv::String& type) {
                    announced.append(QString::fromStdString(appearance->GetId() + " " + type));
                });
        rightClickRow(*browser, 1);
        choose("typeChange");
        auto* dialog = openDialog<CChooseTypeDlg>();
        QVERIFY(dialog);
        QCOMPARE(dialog->GetTypeName(), QString("Generic"));
        press(dialog, QDialogButtonBox::Cancel);
        QVERIFY(announced.isEmpty());
        rightClickRow(*browser, 1);
        choose("typeChange");
        dialog = openDialog<CChooseTypeDlg>();
        QTest::keyClick(dialog->findChild<QComboBox*>(), Qt::Key_End);
        press(dialog, QDialogButtonBox::Ok);
        QCOMPARE(announced, QStringList("b TilesPlain"));
    }

    void favouriteCategoryIsAskedFor()
    {
        const auto browser = m_fixture.MakeBrowserOf("Customer Library");
        QStringList announced;
        connect(browser.get(), &CAppearanceLibraryBrowserCtrl::OnAddFavoriteAppearance,
                [&](const kiv::CAppearanceInstancePtr& appearance, const kiv::String& category) {
                    announced.append(QString::fromStdString(appearance->GetId() + " " + category));
                });
        rightClickRow(*browser, 3);
        choose("addFavorite");
        auto* dialog = openDialog<CFavoriteCategoryDlg>();
        QVERIFY(dialog);
        QCOMPARE(dialog->GetSelectedType(), QString("Wood"));
        press(dialog, QDialogButtonBox::Ok);
        QCOMPARE(announced, QStringList("d Wood"));
    }

    void treeMenuExpandsAndCollapses()
    {
        const auto browser = m_fixture.MakeBrowserOf("Customer Library");
        QTreeWidget* tree = browser->GetTreeWidget();
        rightClick(tree, QPoint(30, 10));
        QCOMPARE(offered(openMenu()), QStringList({"Expand All", "Collapse All"}));
        choose("Expand All");
        QVERIFY(TreeItem(*browser, "Wood/Hard/Rare")->isExpanded());
        rightClick(tree, QPoint(30, 10));
        choose("Collapse All");
        QVERIFY(!tree->topLevelItem(0)->isExpanded());
    }

    void libraryIsAskedFor()
    {
        m_fixture.manager.AddUserAppearanceLibrary(
            m_fixture.MakeLibrary("Customer Library", BrowserFixture::Samples()));
        const auto browser = m_fixture.MakeBrowserOf("System Library");
        QStringList announced;
        connect(browser.get(), &CAppearanceLibraryBrowserCtrl::OnMaterialLibraryChange,
                [&](const kiv::String& name) { announced.append(QString::fromStdString(name)); });
        for (const int entry : {1, 0}) {
            rightClick(browser->GetTreeWidget(), QPoint(30, 10));
            choose("Choose Library...");
            auto* dialog = openDialog<CChooseLibraryDlg>();
            QVERIFY(dialog);
            auto* combo = dialog->findChild<QComboBox*>();
            QCOMPARE(combo->itemText(entry), QString(entry ? "System Library" : "Customer Library"));
            combo->setCurrentIndex(entry);
            press(dialog, QDialogButtonBox::Ok);
        }
        QCOMPARE(announced, QStringList("System Library"));
        QCOMPARE(browser->GetCurrentLibrary()->GetName(), std::string("Customer Library"));
        m_fixture.manager.DeleteUserAppearanceLibrary("Customer Library");
    }

    void buttonsAnnounceTheCloud()
    {
        CAppearanceLibraryBrowserCtrl browser(m_fixture.manager, nullptr, nullptr, true);
        browser.show();
        QSignalSpy collected(&browser, &CAppearanceLibraryBrowserCtrl::OnAddFavoriteTextures);
        QSignalSpy synchronized(&browser, &CAppearanceLibraryBrowserCtrl::OnSynchronizedCloud);
        for (auto* button : browser.findChildren<QToolButton*>())
            QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(collected.size(), 1);
        QCOMPARE(synchronized.size(), 1);
        browser.ShowCollectAndSynchBtn(false);
        for (const auto* button : browser.findChildren<QToolButton*>())
            QVERIFY(!button->isVisible());
    }

    void typesInTheirOrder()
    {
        CChooseTypeDlg dialog(nullptr);
        QStringList types;
        const auto* combo = dialog.findChild<QComboBox*>();
        for (int i = 0; i < combo->count(); ++i)
            types += combo->itemData(i, Qt::UserRole).toString();
        QCOMPARE(types.join(' '), QString("Concrete Generic Glass Metal Brick Plastic Wood Paint Carpet Wallpaper "
                                          "Stone Roof TilesPlain"));
        dialog.SetTypeName("Glass");
        dialog.SetTypeName("Leather");
        QCOMPARE(dialog.GetTypeName(), QString("Glass"));
    }

    void typesAreTranslatedInTheirOwnContext()
    {
        class Translator : public QTranslator {
            QString translate(const char* context, const char* text, const char*, int) const override
            {
                return QByteArray(context) == "CChooseTypeDlg" ? QString("<%1>").arg(text) : QString();
            }
            bool isEmpty() const override { return false; }
        } translator;
        QCoreApplication::installTranslator(&translator);
        const CChooseTypeDlg dialog(nullptr);
        QCoreApplication::removeTranslator(&translator);
        const auto* combo = dialog.findChild<QComboBox*>();
        QCOMPARE(combo->itemText(12) + combo->itemData(12).toString(), QString("<TilesPlain>TilesPlain"));
        QCOMPARE(dialog.findChild<QLabel*>()->text(), QString("<材质类型：>"));
    }

    void favouriteCategoryForm()
    {
        CFavoriteCategoryDlg dialog("Leather", nullptr);
        dialog.show();
        QCOMPARE(dialog.GetSelectedType(), QString("Other"));
        auto* group = dialog.findChild<QButtonGroup*>();
        QTest::mouseClick(group->button(10), Qt::LeftButton, {}, QPoint(8, group->button(10)->height() / 2));
        QCOMPARE(dialog.GetSelectedType(), QString("TilesPlain"));
        dialog.SetSelectedType("Ceiling");
        dialog.UncheckAll();
        QCOMPARE(group->checkedId(), 2);
    }

private:
    BrowserFixture m_fixture;
};

MATERIAL_TEST_MAIN(TestBrowserMenus)
#include "TestBrowserMenus.moc"
