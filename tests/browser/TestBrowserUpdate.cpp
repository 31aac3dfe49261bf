// The browser follows a library that changes, and keeps what the user had chosen as far as it still exists.
#include "BrowserFixture.h"
#include "MaterialTest.h"

#include <QScrollBar>

class TestBrowserUpdate : public MaterialTest {
    Q_OBJECT

private slots:
    void updateKeepsWhatWasChosen()
    {
        QList<BrowserFixture::Sample> samples;
        for (int i = 0; i < 200; ++i)
            samples.append({QString("id%1").arg(i, 3, 10, QChar('0')), QString("Name %1").arg(i % 7), "Wood/Hard", ""});
        samples.append({"z", "Slate", "Stone", ""});
        const auto browser = m_fixture.MakeBrowserOf("Customer Library", samples);
        browser->SelectTreeItem("Wood/Hard");
        browser->GetTreeWidget()->expandAll();
        browser->onTableWidgetSort(1);
        browser->SelectTableItem("id100");
        browser->GetTableWidget()->verticalScrollBar()->setValue(1234);
        browser->GetTreeWidget()->verticalScrollBar()->setValue(5);
        const QStringList rows = RowIds(*browser);
        Selections selections(*browser);

        samples.append({"x", "A new one", "Wood/Hard", ""});
        browser->UpdateLibrary(m_fixture.MakeLibrary("Customer Library", samples));
        QCOMPARE(RowIds(*browser), QStringList("x") + rows);
        QCOMPARE(browser->getCurrentTreeItem()->data(0, Qt::UserRole).toString(), QString("Wood/Hard"));
        QCOMPARE(browser->GetCurSel(), QString("id100"));
        QCOMPARE(browser->GetTableWidget()->selectedItems().value(0)->data(Qt::UserRole).toString(), QString("id100"));
        QCOMPARE(browser->GetTableWidget()->verticalScrollBar()->value(), 1234);
        QCOMPARE(browser->GetTreeWidget()->verticalScrollBar()->value(), 5);
        QVERIFY(selections.take().isEmpty());
    }

    void updateForgetsWhatVanished()
    {
        const auto browser = m_fixture.MakeBrowserOf("Customer Library");
        browser->SelectTreeItem("f");
        browser->SelectTreeItem("Wood/Hard/Rare");
        Selections selections(*browser);
        browser->UpdateLibrary(m_fixture.MakeLibrary("Customer Library", BrowserFixture::Samples().mid(0, 5)));
        QCOMPARE(browser->getCurrentTreeItem()->data(0, Qt::UserRole).toString(), QString("Wood/Hard"));
        QCOMPARE(RowIds(*browser), QStringList("d"));
        QCOMPARE(browser->GetCurSel(), QString());
        QVERIFY(!TreeItem(*browser, "Wood/Hard/Rare"));
        QVERIFY(selections.take().isEmpty());
    }

    void updateOfAnotherLibraryShowsIt()
    {
        const auto browser = m_fixture.MakeBrowser();
        browser->UpdateLibrary(m_fixture.MakeLibrary("Customer Library", {}));
        QCOMPARE(TreeTexts(*browser), QStringList("All Material"));
        browser->UpdateLibrary(m_fixture.MakeLibrary("System Library", BrowserFixture::Samples()));
        QCOMPARE(TreeTexts(*browser).size(), 12);
        QCOMPARE(TreeTexts(*browser).first(), QString("System Library"));
    }

    void favouriteUpdateNeedsTheFavouriteLibrary()
    {
        const auto favourites = m_fixture.MakeLibrary("Favorite Library", BrowserFixture::Samples());
        const auto browser = m_fixture.MakeBrowserOf("System Library", {});
        browser->UpdateFavoriteLibrary(favourites);
        QCOMPARE(RowIds(*browser).size(), 0);
        browser->UpdateLibrary(m_fixture.MakeLibrary("Favorite Library", {}));
        browser->UpdateFavoriteLibrary(favourites);
        QCOMPARE(RowIds(*browser).size(), 6);
    }

    void emptyCategoryGoesAwayExceptTheSystems()
    {
        for (const char* name : {"Favorite Library", "System Library"}) {
            const bool stays = name == QString("System Library");
            const auto browser = m_fixture.MakeBrowserOf(name);
            const auto library = browser->GetCurrentLibrary();
            browser->SelectTreeItem("Wood/Hard/Rare");
            const kiv::CAppearanceInstancePtr rare = library->FindInstance("f");
            library->DeleteInstance("f");
            browser->UpdateLibrary(rare, false);
            QCOMPARE(TreeItem(*browser, "Wood/Hard/Rare") != nullptr, stays);
            QCOMPARE(RowIds(*browser), stays ? QStringList() : QStringList("d"));
            browser->SelectTreeItem("Brick");
            const kiv::CAppearanceInstancePtr cork = library->FindInstance("c");
            library->DeleteInstance("c");
            browser->UpdateLibrary(cork, false);
            QCOMPARE(browser->getCurrentTreeItem(), TreeItem(*browser, "Brick"));
            browser->UpdateLibrary(library);
            QCOMPARE(TreeItem(*browser, "Wood/Hard/Rare") != nullptr, stays);
        }
    }

    void rowIsRemovedWithoutSelectingAnother()
    {
        const auto browser = m_fixture.MakeBrowserOf("Favorite Library");
        const auto library = browser->GetCurrentLibrary();
        browser->SelectTableItem("b");
        Selections selections(*browser);
        const kiv::CAppearanceInstancePtr brick = library->FindInstance("b");
        library->DeleteInstance("b");
        browser->UpdateLibrary(brick, false);
        QCOMPARE(RowIds(*browser), QStringList({"a", "c", "d", "e", "f"}));
        QVERIFY(!TreeItem(*browser, "b") && TreeItem(*browser, "Brick"));
        QCOMPARE(browser->GetCurSel(), QString());
        QVERIFY(selections.take().isEmpty());
    }

    void addedAppearanceIsShownAndSelected()
    {
        const auto browser = m_fixture.MakeBrowserOf("Customer Library");
        const auto library = browser->GetCurrentLibrary();
        browser->SelectTreeItem("Brick");
        const auto added = m_fixture.MakeAppearance({"n", "Slate", "Stone/Grey", ""});
        Selections selections(*browser);
        browser->OnAddAppearance(added);
        QVERIFY(selections.take().isEmpty());
        library->AddInstance(added);
        browser->OnAddAppearance(added);
        QCOMPARE(selections.take(), QStringList("n"));
        QCOMPARE(RowIds(*browser), QStringList("n"));
        QCOMPARE(TreeItem(*browser, "n")->parent(), TreeItem(*browser, "Stone/Grey"));
    }

    void editedAppearanceIsRefreshed()
    {
        const auto browser = m_fixture.MakeBrowserOf("Customer Library");
        const auto library = browser->GetCurrentLibrary();
        browser->SelectTableItem("d");
        const kiv::CAppearanceInstancePtr oak = library->FindInstance("d");
        const QTableWidget* table = browser->GetTableWidget();
        QCOMPARE(table->item(3, 0)->background().color(), QColor(127, 63, 255));
        oak->SetName("Ash");
        oak->SetDiffuse({1, 1, 0, 0.5F});
        browser->OnAppearancePropertyChanged(oak, "diffuse_color");
        QCOMPARE(table->item(3, 1)->text(), QString("Ash"));
        QCOMPARE(table->item(3, 0)->background().color(), QColor(255, 255, 0, 127));
        QCOMPARE(TreeItem(*browser, "d")->text(0), QString("Ash"));
        oak->SetCategory("Brick");
        browser->OnAppearancePropertyChanged(oak, "category");
        QCOMPARE(TreeItem(*browser, "d")->parent(), TreeItem(*browser, "Brick"));
        QCOMPARE(browser->GetCurSel(), QString("d"));
        browser->SelectTreeItem("d");
        oak->SetCategory("Stone");
        browser->OnAppearancePropertyChanged(oak, "category");
        QCOMPARE(browser->getCurrentTreeItem(), TreeItem(*browser, "d"));
        browser->OnAppearancePropertyChanged(m_fixture.MakeAppearance({"d", "Impostor", "", ""}), "name");
        QCOMPARE(TreeItem(*browser, "d")->text(0), QString("Ash"));
    }

    void cloudMarkFollows()
    {
        const auto browser = m_fixture.MakeBrowserOf("Favorite Library");
        const auto library = browser->GetCurrentLibrary();
        const kiv::CAppearanceInstancePtr cork = library->FindInstance("c");
        browser->ModifyTableWidgetItemCloud(cork);
        cork->SetCloudFlag(true);
        QVERIFY(browser->ModifyTableWidgetItemCloud(cork));
        QCOMPARE(browser->GetTableWidget()->item(2, 0)->data(254), QVariant(true));
        browser->SelectTreeItem("Wood");
        QVERIFY(!browser->ModifyTableWidgetItemCloud(cork));
        QVERIFY(!browser->SetTableWidgetIcon(cork) && !browser->SetTableWidgetIcon(nullptr));
        browser->SelectTreeItem("Other");
        QCOMPARE(browser->GetTableWidget()->item(0, 0)->data(254), QVariant(true));
        QVERIFY(browser->SetTableWidgetIcon(cork));
    }

private:
    BrowserFixture m_fixture;
};

MATERIAL_TEST_MAIN(TestBrowserUpdate)
#include "TestBrowserUpdate.moc"
