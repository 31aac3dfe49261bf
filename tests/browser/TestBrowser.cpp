// What a library looks like in the browser, and how an appearance is selected, found and sorted.
#include "BrowserFixture.h"
#include "MaterialTest.h"

#include <QComboBox>
#include <QHeaderView>

namespace {

class OneTree : public AppearanceLibraryProvider {
public:
    QList<Level> GetLevels() const override { return {{"By use", 7}, {"By maker", 3}}; }
    QList<Category> GetCategories(int treeIndex) const override
    {
        if (treeIndex == 7)
            return {{"Walls", "Brick", 2, {}, {{"Glazed", "Brick", -1, {}, {}}}}, {"Floors", "Wood", 0, {}, {}}};
        return treeIndex == 3 ? QList<Category>{{"Timber", "Wood", -1, {}, {}}} : QList<Category>();
    }
};

}  // namespace

class TestBrowser : public MaterialTest {
    Q_OBJECT

private slots:
    void libraryBecomesTreeAndTable_data()
    {
        const auto row = testColumns<QString, QString, QString, bool>("name", "text", "prefix", "isEntry");
        row("system", "System Library", "System Library", "SL", true);
        row("favourite", "Favorite Library", "Favorite Library", "FL", true);
        row("customer", "Customer Library", "All Material", "CL", false);
        row("of a host", "Project 7", "Project 7", "", false);
    }

    void libraryBecomesTreeAndTable()
    {
        QFETCH(QString, name);
        QFETCH(QString, text);
        QFETCH(QString, prefix);
        QFETCH(bool, isEntry);
        const auto browser = m_fixture.MakeBrowser();
        Selections selections(*browser);
        browser->AddLibrary(m_fixture.MakeLibrary(name, BrowserFixture::Samples()));
        QCOMPARE(TreeTexts(*browser),
                 QStringList({text, " Brick", "  Red brick", "  Glazed brick", " Wood", "  Hard", "   Rare",
                              "    Zebrano", "   Oak", "  Walnut", " Other", "  Cork"}));
        QCOMPARE(RowIds(*browser), QStringList({"a", "b", "c", "d", "e", "f"}));
        QCOMPARE(browser->getCurrentTreeItem()->data(0, Qt::UserRole).toString(), name);
        QCOMPARE(browser->GetTableWidget()->objectName(), prefix + "tableWidget");
        QCOMPARE(browser->GetTreeWidget()->objectName(), prefix + "treeWidget");
        const auto* combo = browser->findChild<QComboBox*>(prefix + "comboBox");
        QVERIFY(combo);
        QCOMPARE(combo->isVisible(), isEntry);
        QCOMPARE(combo->currentData().toString(), isEntry ? name : QString());
        QVERIFY(selections.take().isEmpty());
    }

    void cellsHoldTheirRoles()
    {
        const auto library = m_fixture.MakeLibrary("System Library", BrowserFixture::Samples());
        library->FindInstance("b")->SetCloudFlag(true);
        const auto browser = m_fixture.MakeBrowser();
        browser->AddLibrary(library);
        const QTableWidgetItem* picture = browser->GetTableWidget()->item(1, 0);
        const QTableWidgetItem* name = browser->GetTableWidget()->item(1, 1);
        QCOMPARE(picture->flags(), Qt::ItemIsEnabled);
        QCOMPARE(picture->data(256).toString(), QString("b"));
        QCOMPARE(picture->data(254), QVariant(true));
        QCOMPARE(browser->GetTableWidget()->item(0, 0)->data(254), QVariant(false));
        QCOMPARE(picture->background().color(), QColor(127, 63, 255, 255));
        QVERIFY(!picture->data(255).isValid());
        QCOMPARE(name->data(256).toString(), QString("b"));
        QCOMPARE(name->text(), QString("Red brick"));
        QVERIFY(name->toolTip().contains("Red brick") && name->toolTip().contains("Generic") &&
                name->toolTip().contains("红砖"));
        QCOMPARE(TreeItem(*browser, "b")->data(0, 257), QVariant(true));
        QCOMPARE(TreeItem(*browser, "Wood/Hard/Rare")->text(0), QString("Rare"));
    }

    void categoryShowsWhatIsBelow()
    {
        const auto browser = m_fixture.MakeBrowserOf("System Library");
        ClickTree(*browser, TreeItem(*browser, "Wood"));
        QCOMPARE(RowIds(*browser), QStringList({"a", "d", "f"}));
        browser->GetTreeWidget()->expandAll();
        ClickTree(*browser, TreeItem(*browser, "Wood/Hard"));
        QCOMPARE(RowIds(*browser), QStringList({"d", "f"}));
        ClickTree(*browser, browser->GetTreeWidget()->topLevelItem(0));
        QCOMPARE(RowIds(*browser).size(), 6);
    }

    void hostileCategoriesStayShallow()
    {
        const auto browser = m_fixture.MakeBrowser();
        browser->AddLibrary(m_fixture.MakeLibrary(
            "System Library",
            {{"a", "Deep", QString("x/").repeated(20000), ""}, {"b", "None", "", ""}, {"c", "Slash", "/", ""}}));
        int depth = 0;
        for (const QTreeWidgetItem* item = TreeItem(*browser, "a"); item; item = item->parent())
            ++depth;
        QVERIFY(depth < 30);
        QCOMPARE(TreeItem(*browser, "b")->parent(), browser->GetTreeWidget()->topLevelItem(0));
        QCOMPARE(TreeItem(*browser, "c")->parent(), browser->GetTreeWidget()->topLevelItem(0));
        browser->GetTreeWidget()->setCurrentItem(TreeItem(*browser, "a")->parent());
        QCOMPARE(RowIds(*browser), QStringList("a"));
    }

    void oneChoiceIsAnnouncedOnce()
    {
        const auto browser = m_fixture.MakeBrowserOf("Customer Library");
        Selections selections(*browser);
        ClickCell(*browser, 1, 1);
        QCOMPARE(selections.take(), QStringList("b"));
        QCOMPARE(browser->GetCurSel(), QString("b"));
        // Again, since by now another browser's appearance may be the one in work.
        ClickCell(*browser, 1, 0);
        QCOMPARE(selections.take(), QStringList("b"));
        ClickCell(*browser, 2, 0);
        QCOMPARE(selections.take(), QStringList("c"));
        QCOMPARE(browser->GetTableWidget()->selectedItems().size(), 1);
        browser->GetTreeWidget()->expandAll();
        ClickTree(*browser, TreeItem(*browser, "e"));
        QCOMPARE(selections.take(), QStringList("e"));
        QCOMPARE(browser->GetTableWidget()->currentRow(), 4);
        ClickTree(*browser, TreeItem(*browser, "e"));
        QCOMPARE(selections.take(), QStringList("e"));
        QCOMPARE(browser->GetCurrentApperance(), browser->GetCurrentLibrary()->FindInstance("e"));
    }

    void keysSelectToo()
    {
        const auto browser = m_fixture.MakeBrowserOf("Customer Library");
        ClickCell(*browser, 0, 0);
        Selections selections(*browser);
        QTest::keyClick(browser->GetTableWidget(), Qt::Key_Down);
        QCOMPARE(selections.take(), QStringList("b"));
        QTest::keyClick(browser->GetTableWidget(), Qt::Key_Left);
        QTest::keyClick(browser->GetTableWidget(), 'z');
        QCOMPARE(selections.take(), QStringList("f"));
        QTest::keyClick(browser->GetTableWidget(), Qt::Key_Return);
        QCOMPARE(selections.take(), QStringList("f"));
        browser->onSearchKeyWord("brick");
        QTest::keyClick(browser->GetTreeWidget(), Qt::Key_F3);
        QCOMPARE(selections.take(), QStringList({"b", "e"}));
        QTest::keyClick(browser->GetTreeWidget(), Qt::Key_F3);
        QCOMPARE(selections.take(), QStringList());
        QTest::keyClick(browser->GetTreeWidget(), Qt::Key_Home);
        QTest::keyClick(browser->GetTreeWidget(), Qt::Key_Return);
        QVERIFY(!browser->GetTreeWidget()->topLevelItem(0)->isExpanded());
    }

    void vanishedAppearanceIsNotAnnounced()
    {
        const auto browser = m_fixture.MakeBrowserOf("Customer Library");
        const auto library = browser->GetCurrentLibrary();
        Selections selections(*browser);
        library->DeleteInstance("b");
        ClickCell(*browser, 1, 1);
        browser->GetTreeWidget()->setCurrentItem(TreeItem(*browser, "b"));
        QVERIFY(selections.take().isEmpty());
        QCOMPARE(browser->GetCurSel(), QString());
        browser->GetTreeWidget()->clear();
        browser->onSearchKeyWord("oak");
        browser->SelectTableItem("b");
        QVERIFY(selections.take().isEmpty());
    }

    void searchTakesTheFirstInTreeOrder()
    {
        // By name or tags in any case, not by category; nothing asked for is everything.
        const std::pair<const char*, const char*> cases[] = {
            {"", "b"}, {"oak", "d"}, {"BRICK", "b"}, {"Light", "d"}, {"桃木", "a"}, {"granite", ""}, {"Rare", ""}};
        for (const auto& [keyword, found] : cases) {
            const auto browser = m_fixture.MakeBrowser();
            browser->onSearchKeyWord(keyword);
            browser->AddLibrary(m_fixture.MakeLibrary("System Library", BrowserFixture::Samples()));
            browser->SelectTreeItem("Other");
            Selections selections(*browser);
            browser->onSearchKeyWord(keyword);
            QCOMPARE(selections.take().join(' '), QString(found));
            const QString current = browser->getCurrentTreeItem()->data(0, Qt::UserRole).toString();
            QCOMPARE(current, QString(*found ? found : "Other"));
            QCOMPARE(RowIds(*browser).contains(browser->GetCurSel()), *found != 0);
        }
    }

    // Large enough to be searched through signatures.
    void searchInALargeLibrary()
    {
        QList<BrowserFixture::Sample> samples;
        for (int i = 0; i < 3000; ++i)
            samples.append({QString::number(10000 + i), QString("Stone %1").arg(i), "Stone", "common 石材"});
        samples[2500].tags += " needle 针";
        const auto browser = m_fixture.MakeBrowserOf("Customer Library", samples);
        const auto library = browser->GetCurrentLibrary();
        QCoreApplication::processEvents();
        Selections selections(*browser);
        for (const char* keyword : {"NEEDLE", "stone 2999", "针", "haystack"})
            browser->onSearchKeyWord(keyword);
        QCOMPARE(selections.take(), QStringList({"12500", "12999", "12500"}));
        library->FindInstance("10007")->SetName("Haystack");
        browser->OnAppearancePropertyChanged(library->FindInstance("10007"), "name");
        browser->onSearchKeyWord("haystack");
        QCOMPARE(selections.take(), QStringList("10007"));
        QCOMPARE(browser->GetTableWidget()->currentItem()->text(), QString("Haystack"));
    }

    void headerSortsBothWaysBelowThePinnedRow()
    {
        QList<BrowserFixture::Sample> samples = BrowserFixture::Samples();
        samples.append({"p", "云端材质库", "Other", ""});
        const auto browser = m_fixture.MakeBrowserOf("System Library", samples);
        const auto other = m_fixture.MakeBrowser();
        other->onTableWidgetSort(1);
        const QHeaderView* header = browser->GetTableWidget()->horizontalHeader();
        const QPoint section(header->sectionViewportPosition(1) + 20, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, section);
        QCOMPARE(RowIds(*browser), QStringList({"p", "c", "e", "d", "b", "a", "f"}));
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, section);
        QCOMPARE(RowIds(*browser), QStringList({"p", "f", "a", "b", "d", "e", "c"}));
        QCOMPARE(header->sortIndicatorOrder(), Qt::DescendingOrder);
        browser->SelectTreeItem("Wood");
        QCOMPARE(RowIds(*browser), QStringList({"f", "a", "d"}));
    }

    void defaultIsTheSecondRow()
    {
        const auto browser = m_fixture.MakeBrowser();
        Selections selections(*browser);
        browser->AddLibrary(m_fixture.MakeLibrary("Customer Library", BrowserFixture::Samples().mid(0, 1)));
        browser->SelectDefault();
        QVERIFY(selections.take().isEmpty());
        browser->AddLibrary(m_fixture.MakeLibrary("System Library", BrowserFixture::Samples()));
        browser->SelectTreeItem("Customer Library");
        browser->SelectDefault();
        QCOMPARE(selections.take(), QStringList("b"));
        QCOMPARE(browser->getCurrentTreeItem(), browser->GetTreeWidget()->topLevelItem(1));
        QCOMPARE(browser->GetTableWidget()->currentItem(), browser->GetTableWidget()->item(1, 1));
        QCOMPARE(browser->GetCurrentLibrary()->GetName(), std::string("System Library"));
    }

    void programSelects()
    {
        const auto browser = m_fixture.MakeBrowserOf("Customer Library");
        const auto library = browser->GetCurrentLibrary();
        Selections selections(*browser);
        browser->SelectTreeItem("Brick");
        browser->SelectAppearance(library->FindInstance("f"));
        QCOMPARE(selections.take(), QStringList("f"));
        QVERIFY(RowIds(*browser).contains("f"));
        QCOMPARE(browser->GetTableWidget()->currentItem()->text(), QString("Zebrano"));
        browser->SelectAppearance(nullptr);
        browser->SelectAppearance(m_fixture.MakeAppearance({"strange", "", "", ""}));
        QVERIFY(selections.take().isEmpty());
    }

    void comboBoxAnnouncesLibraries()
    {
        const auto browser = m_fixture.MakeBrowser();
        QStringList announced;
        connect(browser.get(), &CAppearanceLibraryBrowserCtrl::OnMaterialLibraryChange,
                [&](const kiv::String& name) { announced.append(QString::fromStdString(name)); });
        auto* combo = browser->findChild<QComboBox*>("comboBox");
        QCOMPARE(combo->count(), 2);
        QCOMPARE(combo->itemText(0), QString("公共材质"));
        QCOMPARE(combo->itemText(1), QString("我的材质"));
        QTest::keyClick(combo, Qt::Key_Down);
        QTest::keyClick(combo, Qt::Key_Up);
        QCOMPARE(announced, QStringList({"Favorite Library", "System Library"}));
        browser->SetComboBoxCurrentItem("Favorite Library");
        QCOMPARE(combo->currentIndex(), 1);
        QCOMPARE(announced.size(), 2);
    }

    void providerDescribesTheTrees()
    {
        OneTree provider;
        const auto browser = m_fixture.MakeBrowser(&provider);
        QCOMPARE(browser->getAppearanceLibraryProvider(), &provider);
        browser->AddLibrary(m_fixture.MakeLibrary("Customer Library", BrowserFixture::Samples()));
        QCOMPARE(TreeTexts(*browser).mid(0, 4), QStringList({"Walls[2]", " Glazed", "Floors[0]", "All Material"}));
        browser->GetTreeWidget()->setCurrentItem(browser->GetTreeWidget()->topLevelItem(0));
        QCOMPARE(RowIds(*browser), QStringList({"b", "e"}));
        auto* combo = browser->findChild<QComboBox*>("CLcomboBox");
        QCOMPARE(combo->itemText(1), QString("By maker"));
        combo->setCurrentIndex(1);
        QCOMPARE(TreeTexts(*browser).mid(0, 2), QStringList({"Timber", "All Material"}));
        QCOMPARE(RowIds(*browser), QStringList({"a", "d", "f"}));
    }

private:
    BrowserFixture m_fixture;
};

MATERIAL_TEST_MAIN(TestBrowser)
#include "TestBrowser.moc"
