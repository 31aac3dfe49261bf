// What keys, context menus, dragging and dropping make the browser announce, and for which appearances.
#include "BrowserFixture.h"
#include "MaterialTest.h"

#include <AppearanceMime.h>
#include <ChooseTypeDlg.h>
#include <FavoriteCategoryDlg.h>
#include <GlobalConfig.h>

#include <kiv/AppearanceParser.h>

#include <QApplication>
#include <QDrag>
#include <QDragEnterEvent>
#include <QMimeData>

using Browser = CAppearanceLibraryBrowserCtrl;

namespace {

void activate(Browser& browser, QWidget* view)
{
    browser.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&browser));
    view->setFocus();
}

/// As the owner of a browser does it.
void removeFrom(Browser& browser, const kiv::CAppearanceInstancePtr& appearance)
{
    browser.GetCurrentLibrary()->DeleteInstance(appearance->GetId());
    browser.UpdateLibrary(appearance, false);
}

QString selectedIds(const Browser& browser)
{
    QStringList ids;
    for (const QTableWidgetItem* item : browser.GetTableWidget()->selectedItems())
        ids.append(item->data(Qt::UserRole).toString());
    return ids.join(' ');
}

QString currentId(const Browser& browser)
{
    const QTableWidgetItem* item = browser.GetTableWidget()->currentItem();
    return item ? item->data(Qt::UserRole).toString() : QString();
}

QString idsOf(const Browser::Appearances& appearances)
{
    QStringList ids;
    for (const kiv::CAppearanceInstancePtr& appearance : appearances)
        ids.append(QString::fromStdString(appearance->GetId()));
    return ids.join(' ');
}

/// Whether the data were accepted; they are dropped if so.
bool drop(QAbstractScrollArea* view, const QMimeData& data)
{
    const QPoint position(20, 10);
    QDragEnterEvent enter(position, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(view->viewport(), &enter);
    QDropEvent event(position, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    if (enter.isAccepted())
        QApplication::sendEvent(view->viewport(), &event);
    return enter.isAccepted() && event.isAccepted() && event.dropAction() == Qt::CopyAction;
}

}  // namespace

class TestBrowserOperations : public MaterialTest {
    Q_OBJECT

private slots:
    void keysDoWhatTheMenuOffers_data()
    {
        const auto row = testColumns<QString, int, int, QString>("library", "key", "modifiers", "announced");
        const int ctrl = Qt::ControlModifier;
        row("copy", "System Library", Qt::Key_C, ctrl, "copy b");
        row("export", "System Library", Qt::Key_E, ctrl, "export b");
        row("system keeps", "System Library", Qt::Key_Delete, 0, "");
        row("system takes none", "System Library", Qt::Key_I, ctrl, "");
        row("delete", "Customer Library", Qt::Key_Delete, 0, "delete b");
        row("rename", "Customer Library", Qt::Key_F2, 0, "rename b");
        row("import", "Customer Library", Qt::Key_I, ctrl, "import ");
        row("enter is the view's", "Customer Library", Qt::Key_Enter, 0, "");
        row("remove", "Favorite Library", Qt::Key_Delete, 0, "remove b");
        row("no favourite of a favourite", "Favorite Library", Qt::Key_D, ctrl, "");
    }

    void keysDoWhatTheMenuOffers()
    {
        QFETCH(QString, library);
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(QString, announced);
        const auto browser = m_fixture.MakeBrowserOf(library);
        GMaterialUI::CGlobalConfig::SetMaterialNameEditable(true);
        browser->ShowImport(true);
        browser->SelectTreeItem("b");
        Announcements announcements(*browser);
        for (QWidget* view :
             {static_cast<QWidget*>(browser->GetTableWidget()), static_cast<QWidget*>(browser->GetTreeWidget())}) {
            activate(*browser, view);
            QTest::keyClick(view, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
            QCOMPARE(announcements.take(), announced);
        }
        browser->ShowAppearanceMenu(false);
        QTest::keyClick(browser->GetTreeWidget(), Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        QCOMPARE(announcements.take(), QString());
        QVERIFY(!QApplication::activeModalWidget());
        GMaterialUI::CGlobalConfig::SetMaterialNameEditable(false);
    }

    void keyboardSelectsSeveral()
    {
        const auto browser = m_fixture.MakeBrowserOf("Favorite Library");
        QTableWidget* table = browser->GetTableWidget();
        Announcements announcements(*browser);
        activate(*browser, table);
        ClickCell(*browser, 0, 1);
        QTest::keyClick(table, Qt::Key_Down);
        QTest::keyClick(table, Qt::Key_Down);
        QTest::keyClick(table, Qt::Key_Space);
        QTest::keyClick(table, Qt::Key_Down);
        QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(announcements.take(), QString("copy a, copy c"));
        QTest::keyClick(table, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(table, Qt::Key_Space);
        QTest::keyClick(table, Qt::Key_E, Qt::ControlModifier);
        QCOMPARE(announcements.take(), QString("export a b c e f"));
        table->clearSelection();
        QTest::keyClick(table, Qt::Key_E, Qt::ControlModifier);
        QCOMPARE(announcements.take(), QString("export d"));
    }

    void menuWorksOnWhatItWasOpenedFor()
    {
        const auto browser = m_fixture.MakeBrowserOf("Customer Library");
        const auto library = browser->GetCurrentLibrary();
        Announcements announcements(*browser);
        RightClickRow(*browser, 1);
        browser->SelectTableItem("d");
        Choose("delete");
        QCOMPARE(announcements.take(), QString("delete b"));
        // Another object of the same id is another appearance.
        RightClickRow(*browser, 1);
        removeFrom(*browser, library->FindInstance("b"));
        const auto other = m_fixture.MakeAppearance({"b", "Impostor", "Brick", ""});
        library->AddInstance(other);
        browser->UpdateLibrary(other, true);
        Choose("delete");
        QCOMPARE(announcements.take(), QString());
        // One menu's appearances are not the next operation's.
        RightClickRow(*browser, 0);
        OpenMenu()->close();
        QCoreApplication::processEvents();
        browser->SelectTableItem("e");
        browser->OnMenuExportAppearances();
        QCOMPARE(announcements.take(), QString("export e"));
    }

    void dialogsWorkOnWhatTheyWereOpenedFor()
    {
        const auto browser = m_fixture.MakeBrowserOf("Customer Library");
        const auto library = browser->GetCurrentLibrary();
        Announcements announcements(*browser);
        const auto answerAfter = [&](const char* action, const std::function<void()>& change) {
            RightClickRow(*browser, 1);
            Choose(action);
            QPointer<QDialog> dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            change();
            dialog->accept();
        };
        for (const char* action : {"typeChange", "addFavorite"}) {
            answerAfter(action, [&] { browser->SelectTableItem("d"); });
            QCOMPARE(announcements.take().section(' ', -1), QString("b"));
            const kiv::CAppearanceInstancePtr gone = library->FindInstance(RowIds(*browser)[1].toStdString());
            answerAfter(action, [&] { removeFrom(*browser, gone); });
            QCOMPARE(announcements.take(), QString());
            library->AddInstance(gone);
            browser->UpdateLibrary(library);
        }
    }

    void removalIsAskedForOnce()
    {
        const auto browser = m_fixture.MakeBrowserOf("Favorite Library");
        const auto library = browser->GetCurrentLibrary();
        QStringList asked;
        bool answer = false;
        browser->SetRemoveConfirmation([&](const Browser::Appearances& appearances) {
            asked.append(idsOf(appearances));
            return answer;
        });
        Announcements announcements(*browser);
        // The first takes the third with it.
        connect(browser.get(), &Browser::OnRemoveApperance, [&](kiv::CAppearanceInstancePtr& appearance) {
            removeFrom(*browser, appearance);
            if (const kiv::CAppearanceInstancePtr other = library->FindInstance("c"))
                removeFrom(*browser, other);
        });
        for (const int row : {0, 2, 3})
            ClickCell(*browser, row, 1);
        for (const bool answered : {false, true}) {
            answer = answered;
            RightClickRow(*browser, 2);
            Choose("Remove");
        }
        QCOMPARE(asked, QStringList({"a c d", "a c d"}));
        QCOMPARE(announcements.take(), QString("remove a, remove d"));
        QCOMPARE(RowIds(*browser), QStringList({"b", "e", "f"}));
        // A row that is not selected goes alone.
        browser->GetTableWidget()->clearSelection();
        ClickCell(*browser, 0, 1);
        RightClickRow(*browser, 2);
        Choose("Remove");
        QCOMPARE(announcements.take(), QString("remove f"));
    }

    void browserMayGoDuringAnOperation()
    {
        for (const bool whileAsked : {true, false}) {
            auto browser = m_fixture.MakeBrowserOf("Favorite Library");
            int count = 0;
            browser->SetRemoveConfirmation([&](const Browser::Appearances&) {
                if (whileAsked)
                    browser.reset();
                return true;
            });
            connect(browser.get(), &Browser::OnRemoveApperance, [&] {
                ++count;
                browser.reset();
            });
            browser->GetTableWidget()->selectAll();
            browser->OnMenuRemoveAppearance();
            QCOMPARE(count, whileAsked ? 0 : 1);
        }
    }

    void nextRowIsCurrentAfterARemoval_data()
    {
        const auto row =
            testColumns<QString, QString, QString, QString, QString>("library", "category", "gone", "current", "next");
        row("the next", "Customer Library", "", "c", "c", "d");
        row("the last", "Customer Library", "", "f", "f", "e");
        row("another", "Customer Library", "", "a", "c", "c");
        row("of several", "Favorite Library", "", "c", "c", "d");
        row("the last of several", "Favorite Library", "", "f", "f", "e");
        row("with its category", "Customer Library", "Wood/Hard/Rare", "f", "f", "d");
        row("with its category, of several", "Favorite Library", "Wood/Hard/Rare", "f", "f", "d");
    }

    void nextRowIsCurrentAfterARemoval()
    {
        QFETCH(QString, library);
        QFETCH(QString, category);
        QFETCH(QString, gone);
        QFETCH(QString, current);
        QFETCH(QString, next);
        const auto browser = m_fixture.MakeBrowserOf(library);
        if (!category.isEmpty())
            browser->SelectTreeItem(category);
        browser->SelectTableItem(current);
        Selections selections(*browser);
        removeFrom(*browser, browser->GetCurrentLibrary()->FindInstance(gone.toStdString()));
        QCOMPARE(currentId(*browser), next);
        QVERIFY(selections.take().isEmpty());
        QCOMPARE(browser->GetCurSel(), gone == current ? QString() : current);
    }

    void changedAppearanceKeepsItsRow()
    {
        const auto browser = m_fixture.MakeBrowserOf("Favorite Library");
        const auto library = browser->GetCurrentLibrary();
        for (const int row : {0, 2, 3})
            ClickCell(*browser, row, 1);
        const auto change = [&](const char* id, const char* name) {
            library->DeleteInstance(id);
            const auto changed = m_fixture.MakeAppearance({id, name, "Wood/Hard", ""});
            library->AddInstance(changed);
            browser->UpdateLibrary(changed, true);
        };
        change("d", "Ash");
        QCOMPARE(RowIds(*browser), QStringList({"a", "b", "c", "d", "e", "f"}));
        QCOMPARE(browser->GetTableWidget()->item(3, 1)->text() + TreeItem(*browser, "d")->text(0), QString("AshAsh"));
        QCOMPARE(selectedIds(*browser) + currentId(*browser), QString("a c dd"));
        browser->onTableWidgetSort(1);
        change("n", "Maple");
        QCOMPARE(RowIds(*browser), QStringList({"d", "c", "e", "n", "b", "a", "f"}));
        QCOMPARE(TreeItem(*browser, "n")->parent(), TreeItem(*browser, "Wood/Hard"));
    }

    void draggingTellsTheAppearance_data()
    {
        const auto row = testColumns<QString, bool>("library", "isTree");
        row("row", "Customer Library", false);
        row("row beside selected ones", "Favorite Library", false);
        row("tree item", "Customer Library", true);
    }

    void draggingTellsTheAppearance()
    {
        QFETCH(QString, library);
        QFETCH(bool, isTree);
        const auto browser = m_fixture.MakeBrowserOf(library);
        browser->GetTreeWidget()->expandAll();
        ClickCell(*browser, 0, 1);
        QTableWidget* table = browser->GetTableWidget();
        QTreeWidget* tree = browser->GetTreeWidget();
        QAbstractItemView* view = isTree ? static_cast<QAbstractItemView*>(tree) : table;
        const QPoint start = isTree ? tree->visualItemRect(TreeItem(*browser, "b")).center()
                                    : table->visualItemRect(table->item(1, 1)).center();
        Selections selections(*browser);
        kiv::String dragged;
        bool hasPicture = false;
        QTimer timer;
        connect(&timer, &QTimer::timeout, [&] {
            if (const auto* drag = view->findChild<QDrag*>()) {
                dragged = AppearanceMime::IdOf(drag->mimeData());
                hasPicture = !drag->pixmap().isNull();
                QDrag::cancel();
            }
        });
        timer.start(0);
        QTest::mousePress(view->viewport(), Qt::LeftButton, {}, start);
        for (const int y : {1, 2, 40}) {
            QMouseEvent move(QEvent::MouseMove, start + QPoint(0, y), Qt::NoButton, Qt::LeftButton, {});
            QApplication::sendEvent(view->viewport(), &move);
        }
        QCOMPARE(dragged, kiv::String("b"));
        QVERIFY(hasPicture);
        QCOMPARE(selections.take(), QStringList("b"));
        QCOMPARE(selectedIds(*browser), QString(library == "Favorite Library" ? "a" : "b"));
        ClickCell(*browser, 1, 1);
        QCOMPARE(selections.take(), QStringList("b"));
    }

    // An id is text of any kind and length, here and in another program.
    void mimeDataHoldIdAndDocument_data()
    {
        const auto row = testColumns<QString>("id");
        row("plain", "a");
        row("quotes and slashes", "a\"b'c/d\\e&f<g>%h#i");
        row("Chinese", "胡桃木/一号");
        row("long", QString("材x").repeated(2000));
    }

    void mimeDataHoldIdAndDocument()
    {
        QFETCH(QString, id);
        const auto appearance = m_fixture.MakeAppearance({id, "胡桃木 \"1\"", "Wood", ""});
        const auto data = AppearanceMime::Make(appearance, m_fixture.manager);
        QCOMPARE(QString::fromUtf8(data->data("application/x-kiv-appearance-id")), id);
        QVERIFY(AppearanceMime::IsIn(data.get()));
        QCOMPARE(AppearanceMime::IdOf(data.get()), id.toStdString());
        const auto read =
            kiv::CAppearanceParser(m_fixture.manager).AppearanceFromString(AppearanceMime::DocumentOf(data.get()));
        QVERIFY(read && kiv::AreEqual(*read, *appearance));
        QVERIFY(!AppearanceMime::IsIn(nullptr) && AppearanceMime::IdOf(nullptr).empty());
        // The same text for rows, items, menus and keys.
        const auto browser = m_fixture.MakeBrowserOf("Customer Library", {{id, "胡桃木", "Wood", ""}});
        Announcements announcements(*browser);
        RightClickRow(*browser, 0);
        Choose("copy");
        QCOMPARE(announcements.take(), "copy " + id);
    }

    void droppedFilesAreImported_data()
    {
        const auto row = testColumns<QStringList, QString>("urls", "announced");
        row("archive", {"file:///tmp/a.ggm"}, "import /tmp/a.ggm");
        row("several", {"file:///tmp/a.GGM", "file:///tmp/b.Json"}, "import /tmp/a.GGM /tmp/b.Json");
        row("Chinese and blanks", {"file:///tmp/胡桃木%201.json"}, "import /tmp/胡桃木 1.json");
        row("picture", {"file:///tmp/a.png"}, "");
        row("one of another kind", {"file:///tmp/a.ggm", "file:///tmp/b.png"}, "");
        row("of the network", {"http://localhost/a.ggm"}, "");
        row("none", {}, "");
    }

    void droppedFilesAreImported()
    {
        QFETCH(QStringList, urls);
        QFETCH(QString, announced);
        const auto browser = m_fixture.MakeBrowserOf("Customer Library");
        Announcements announcements(*browser);
        QMimeData data;
        data.setUrls(QUrl::fromStringList(urls));
        for (const bool isAllowed : {false, true}) {
            browser->ShowImport(isAllowed);
            for (QAbstractScrollArea* view : {static_cast<QAbstractScrollArea*>(browser->GetTableWidget()),
                                              static_cast<QAbstractScrollArea*>(browser->GetTreeWidget())}) {
                QCOMPARE(drop(view, data), isAllowed && !announced.isEmpty());
                QCoreApplication::processEvents();
                QCOMPARE(announcements.take(), isAllowed ? announced : QString());
            }
        }
    }

    void droppedAppearanceIsCopied()
    {
        const auto project = m_fixture.MakeLibrary("Customer Library", BrowserFixture::Samples());
        const auto favorites = m_fixture.MakeLibrary("Favorite Library", {{"g", "Gold", "Metal", ""}});
        m_fixture.manager.AddUserAppearanceLibrary(project);
        m_fixture.manager.AddUserAppearanceLibrary(favorites);
        const auto browser = m_fixture.MakeBrowser();
        browser->AddLibrary(project);
        Announcements announcements(*browser);
        const auto gold = AppearanceMime::Make(favorites->FindInstance("g"), m_fixture.manager);
        QVERIFY(!drop(browser->GetTableWidget(), *gold));
        browser->ShowImport(true);
        QVERIFY(drop(browser->GetTableWidget(), *gold));
        QCoreApplication::processEvents();
        QCOMPARE(announcements.take(), QString("copy g"));
        // From the library shown, or from none.
        QVERIFY(!drop(browser->GetTreeWidget(), *AppearanceMime::Make(project->FindInstance("a"), m_fixture.manager)));
        favorites->FindInstance("g")->GetDiffuseTexture()->SetTextureFile("gone.png");
        favorites->FindInstance("g")->SetCloudFlag(true);
        QVERIFY(!drop(browser->GetTreeWidget(), *gold));
        favorites->DeleteInstance("g");
        QVERIFY(!drop(browser->GetTreeWidget(), *gold));
        m_fixture.manager.DeleteUserAppearanceLibrary("Customer Library");
        m_fixture.manager.DeleteUserAppearanceLibrary("Favorite Library");
    }

private:
    BrowserFixture m_fixture;
};

MATERIAL_TEST_MAIN(TestBrowserOperations)
#include "TestBrowserOperations.moc"
