// What a user arranged in the dialog comes back the next time.
#include "DialogFixture.h"

#include <AppearanceLibraryBrowserCtrl.h>
#include <AppearancePreviewerCtrl.h>
#include <MaterialTest.h>

#include <QComboBox>
#include <QDir>
#include <QHeaderView>
#include <QScreen>
#include <QSplitter>
#include <QTableWidget>
#include <QTreeWidget>

#include <memory>

namespace {

constexpr char File[] = "favorites/material-dialog.ini";
const QSize FirstSize(590, 520);

QTreeWidgetItem* categoryItem(const CAppearanceLibraryBrowserCtrl* browser, const QString& path)
{
    for (QTreeWidgetItemIterator item(browser->GetTreeWidget()); *item; ++item) {
        if ((*item)->data(0, Qt::UserRole).toString() == path)
            return *item;
    }
    return nullptr;
}

QString category(const CAppearanceLibraryBrowserCtrl* browser)
{
    return browser->GetTreeWidget()->currentItem()->data(0, Qt::UserRole).toString();
}

QStringList rows(const CAppearanceLibraryBrowserCtrl* browser)
{
    QStringList names;
    const QTableWidget* table = browser->GetTableWidget();
    for (int row = 0; row < table->rowCount(); ++row)
        names += table->item(row, 1)->text();
    return names;
}

void clickHeader(const CAppearanceLibraryBrowserCtrl* browser)
{
    QHeaderView* header = browser->GetTableWidget()->horizontalHeader();
    const QPoint place(header->sectionViewportPosition(1) + 10, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
}

QComboBox* box(const TestedDialog& dialog, const char* name)
{
    return dialog.findChild<QComboBox*>(name);
}

QList<int> splitterSizes(const TestedDialog& dialog)
{
    return dialog.findChild<QSplitter*>()->sizes();
}

}  // namespace

class TestDialogState : public MaterialTest {
    Q_OBJECT

private slots:
    void init()
    {
        m_fixture = std::make_unique<DialogFixture>();
        const auto project = m_fixture->manager().FindUserAppearanceLibrary("Customer Library");
        for (const char* id : {"p0", "p1"})
            project->FindInstance(id)->SetCategory(u8"石材/红砖");
        project->AddInstance(m_fixture->makeTagged("p2"));
        for (const char* id : {"f0", "f1", "f2"}) {
            const auto favorite = m_fixture->makeTagged(id);
            favorite->SetCategory(id == std::string("f2") ? "Wood" : "Stone");
            m_fixture->write(QString("favorites/Favorite Library/%1.json").arg(id), m_fixture->document(favorite));
        }
    }

    void comesBack()
    {
        QList<int> sizes;
        {
            TestedDialog dialog(*m_fixture, true);
            QVERIFY(!QFile::exists(m_fixture->path(File)));
            QCOMPARE(dialog.size(), FirstSize);
            emit dialog.system()->OnMaterialLibraryChange("Favorite Library");
            open(dialog);
            arrange(dialog);
            sizes = splitterSizes(dialog);
            dialog.close();
        }
        m_fixture->manager().SetShaderLevelOfDetail(kiv::CAppearanceLibraryManager::ShaderFast);
        TestedDialog again(*m_fixture, true);
        // The first selection is the system library's as ever, and nothing is announced by what comes back.
        QCOMPARE(again.shownName(), QString("s1"));
        QCOMPARE(category(again.project()), QString(u8"石材/红砖"));
        QCOMPARE(again.project()->GetCurSel(), QString());
        open(again);
        QCOMPARE(again.size(), QSize(720, 640));
        QCOMPARE(splitterSizes(again), sizes);
        QCOMPARE(rows(again.project()), QStringList({"p1", "p0"}));
        QCOMPARE(QString::fromStdString(again.system()->GetCurrentLibrary()->GetName()), QString("Favorite Library"));
        QCOMPARE(category(again.system()), QString("Stone"));
        QCOMPARE(rows(again.system()), QStringList({"f0", "f1"}));
        QCOMPARE(again.system()->GetTableWidget()->horizontalHeader()->sortIndicatorOrder(), Qt::AscendingOrder);
        QCOMPARE(box(again, "shapeCombo")->currentText(), QString("Box"));
        QCOMPARE(box(again, "shadingCombo")->currentText(), QString("Default Shader"));
        QCOMPARE(int(m_fixture->manager().GetShaderLevelOfDetail()),
                 int(kiv::CAppearanceLibraryManager::ShaderDefault));
        QCOMPARE(again.shownName(), QString("s1"));
    }

    void theLastOneClosedIsRemembered()
    {
        TestedDialog first(*m_fixture, false), second(*m_fixture, false);
        for (TestedDialog* dialog : {&first, &second})
            dialog->show();
        first.resize(650, 600);
        second.resize(700, 610);
        clickHeader(first.project());
        second.close();
        first.close();
        QCOMPARE(TestedDialog(*m_fixture, false).size(), QSize(650, 600));
        // One that is closed before its favourites were there keeps the category that waits for them.
        m_fixture->write(File, "[SystemLibrary]\nlibrary=Favorite Library\ncategory=Wood\n");
        {
            TestedDialog early(*m_fixture, true);
            early.show();
            early.close();
        }
        TestedDialog late(*m_fixture, true);
        open(late);
        QCOMPARE(category(late.system()), QString("Wood"));
    }

    void nonsenseIsIgnored_data()
    {
        const auto row = testColumns<QByteArray>("text");
        row("empty", "");
        row("no settings", QByteArray("\x00\xff[[[=\n]==\n%%%", 15));
        row("too long", "[Dialog]\nsize=@Size(700 600)\nmore=" + QByteArray(100 * 1000, 'x'));
        row("other types", "[Dialog]\nsize=large\nsplitter=@Size(1 2)\n[Preview]\nshape=7\nshading=@Size(1 1)\n");
        row("sizes below none", "[Dialog]\nsize=@Size(-5 0)\nsplitter=-1, 0, 2147483647\n");
        row("splitter of another", "[Dialog]\nsplitter=1, 2, 3, 4\n[ProjectLibrary]\ncategory=p0\nsortColumn=77\n");
        row("no such", "[SystemLibrary]\nlibrary=Gone\ncategory=a/b\nsortColumn=-1\n[ProjectLibrary]\ncategory=/\n");
    }

    void nonsenseIsIgnored()
    {
        QFETCH(QByteArray, text);
        const auto look = [this] {
            TestedDialog dialog(*m_fixture, false);
            dialog.show();
            QStringList seen{box(dialog, "shapeCombo")->currentText(), box(dialog, "shadingCombo")->currentText(),
                             category(dialog.project()), category(dialog.system()), dialog.shownName()};
            seen += rows(dialog.project()) + rows(dialog.system());
            for (const int size : splitterSizes(dialog) + QList<int>{dialog.width(), dialog.height()})
                seen += QString::number(size);
            return seen;
        };
        const QStringList expected = look();
        m_fixture->write(File, text);
        QCOMPARE(look(), expected);
        m_fixture->write(File, text);
        TestedDialog dialog(*m_fixture, false);
        dialog.show();
        dialog.resize(660, 610);
        dialog.close();
        QCOMPARE(TestedDialog(*m_fixture, false).size(), QSize(660, 610));
    }

    void isBoundedToTheScreen()
    {
        m_fixture->write(File, "[Dialog]\nsize=@Size(90000 90000)\n");
        TestedDialog dialog(*m_fixture, false);
        QCOMPARE(dialog.size(), dialog.screen()->availableSize());
    }

    void whatCannotBeKeptIsNot()
    {
        QVERIFY(QDir().mkpath(m_fixture->path(File)));
        for (const std::wstring& root : {m_fixture->widePath("favorites"), std::wstring(L"/proc/favorites"), {}}) {
            m_fixture->manager().SetFavoriteLibraryPath(root);
            TestedDialog dialog(*m_fixture, false);
            QCOMPARE(dialog.size(), FirstSize);
            dialog.show();
            dialog.resize(700, 600);
            dialog.close();
        }
        QVERIFY(QDir(m_fixture->path(File)).exists());
        QVERIFY(!QFile::exists("material-dialog.ini"));
    }

private:
    static void arrange(TestedDialog& dialog)
    {
        dialog.resize(720, 640);
        QCoreApplication::processEvents();
        const QList<int> sizes = splitterSizes(dialog);
        dialog.findChild<QSplitter*>()->setSizes({sizes[0], sizes[1] - 60, sizes[2] + 60});
        dialog.project()->GetTreeWidget()->setCurrentItem(categoryItem(dialog.project(), u8"石材/红砖"));
        dialog.system()->GetTreeWidget()->setCurrentItem(categoryItem(dialog.system(), "Stone"));
        clickHeader(dialog.project());
        clickHeader(dialog.project());
        clickHeader(dialog.system());
        box(dialog, "shapeCombo")->setCurrentText("Box");
        box(dialog, "shadingCombo")->setCurrentText("Default Shader");
    }
    // Until the favourites are there.
    void open(TestedDialog& dialog)
    {
        dialog.show();
        QTRY_VERIFY(m_fixture->manager().FindUserAppearanceLibrary("Favorite Library")->count() == 3);
        QTRY_VERIFY(!QApplication::activeModalWidget());
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    }

    std::unique_ptr<DialogFixture> m_fixture;
};

MATERIAL_TEST_MAIN(TestDialogState)
#include "TestDialogState.moc"
