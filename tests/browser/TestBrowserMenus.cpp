// The context menus, the dialogs that their actions open, and what is announced in the end.
#include "BrowserFixture.h"
#include "MaterialTest.h"

#include <ChooseLibraryDlg.h>
#include <ChooseTypeDlg.h>
#include <FavoriteCategoryDlg.h>
#include <GlobalConfig.h>

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
    void menuFitsTheLibrary_data()
    {
        const auto row = testColumns<QString, int, bool, bool, QString>("library", "editType", "isNameEditable",
                                                                        "isImportShown", "offers");
        const QString any = "Apply Enter, copy Ctrl+C, ";
        row("system", "System Library", 1, true, true, any + "addFavorite Ctrl+D, Export... Ctrl+E");
        row("project", "Customer Library", 1, true, true,
            any + "addFavorite Ctrl+D, typeChange, Rename F2, delete Del, Export... Ctrl+E, Import... Ctrl+I");
        row("names kept", "Customer Library", 1, false, false,
            any + "addFavorite Ctrl+D, typeChange, delete Del, Export... Ctrl+E");
        row("not editable", "Customer Library", 0, true, false,
            any + "addFavorite Ctrl+D, delete Del, Export... Ctrl+E");
        row("favourite", "Favorite Library", 1, true, true, any + "Remove Del, Export... Ctrl+E");
    }

    void menuFitsTheLibrary()
    {
        QFETCH(QString, library);
        QFETCH(int, editType);
        QFETCH(bool, isNameEditable);
        QFETCH(bool, isImportShown);
        QFETCH(QString, offers);
        const auto browser = m_fixture.MakeBrowserOf(library);
        GMaterialUI::CGlobalConfig::SetMaterialNameEditable(isNameEditable);
        browser->ShowImport(isImportShown);
        browser->GetCurrentLibrary()->FindInstance("b")->SetEditType(editType);
        RightClickRow(*browser, 1);
        QCOMPARE(Offered(OpenMenu()).join(", "), offers);
        OpenMenu()->close();
        browser->SelectTreeItem("b");
        QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, QPoint(1, 1));
        QApplication::sendEvent(browser->GetTreeWidget(), &menuKey);
        QCOMPARE(Offered(OpenMenu()).join(", "), offers);
        OpenMenu()->close();
        const QPoint nowhere = browser->GetTableWidget()->viewport()->rect().bottomRight();
        RightClick(browser->GetTableWidget(), nowhere);
        QCOMPARE(Offered(OpenMenu()).join(", "), offers.contains("Import") ? "Import... Ctrl+I" : "");
        if (OpenMenu())
            OpenMenu()->close();
        browser->ShowAppearanceMenu(false);
        RightClick(browser->GetTableWidget(), nowhere);
        RightClickRow(*browser, 1);
        QVERIFY(!OpenMenu());
        GMaterialUI::CGlobalConfig::SetMaterialNameEditable(false);
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
        RightClickRow(*browser, 3);
        QCOMPARE(Offered(OpenMenu()), QStringList({"Download", "Remove Del"}));
        Choose("Download");
        QCOMPARE(downloads.size(), 1);
        QCOMPARE(downloads[0][0].toString(), QString("d"));
    }

    void menuKeyOpensTheMenuOfTheRow()
    {
        const auto browser = m_fixture.MakeBrowserOf("Customer Library");
        browser->SelectTableItem("c");
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1));
        QApplication::sendEvent(browser->GetTableWidget(), &event);
        QVERIFY(OpenMenu());
        const QRect row = browser->GetTableWidget()->visualItemRect(browser->GetTableWidget()->item(2, 1));
        QVERIFY(row.contains(browser->GetTableWidget()->viewport()->mapFromGlobal(OpenMenu()->pos())));
        OpenMenu()->close();
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
        RightClickRow(*browser, 1);
        Choose("typeChange");
        auto* dialog = openDialog<CChooseTypeDlg>();
        QVERIFY(dialog);
        QCOMPARE(dialog->GetTypeName(), QString("Generic"));
        press(dialog, QDialogButtonBox::Cancel);
        QVERIFY(announced.isEmpty());
        RightClickRow(*browser, 1);
        Choose("typeChange");
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
        RightClickRow(*browser, 3);
        Choose("addFavorite");
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
        RightClick(tree, QPoint(30, 10));
        QCOMPARE(Offered(OpenMenu()), QStringList({"Expand All", "Collapse All"}));
        Choose("Expand All");
        QVERIFY(TreeItem(*browser, "Wood/Hard/Rare")->isExpanded());
        RightClick(tree, QPoint(30, 10));
        Choose("Collapse All");
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
            RightClick(browser->GetTreeWidget(), QPoint(30, 10));
            Choose("Choose Library...");
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
