#include "DialogFixture.h"
#include "SmallDisk.h"

#include <AppearanceLibraryBrowserCtrl.h>
#include <MaterialHelper.h>
#include <MaterialTest.h>
#include <ModalMeeting.h>

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QMessageBox>
#include <QProgressBar>
#include <QProgressDialog>
#include <QPushButton>
#include <QTableWidget>

#include <memory>

/// Favourites on disk, the progress dialog and the two timers.
class TestFavoriteLoading : public MaterialTest {
    Q_OBJECT

private slots:
    void init() { m_fixture = std::make_unique<DialogFixture>(); }
    void loadsOnFirstShow()
    {
        writeFavorite("a.json", m_fixture->makeAppearance("first"));
        writeFavorite("b.json", m_fixture->makeAppearance("first", "second of the id"));
        writeFavorite("c.JSON", m_fixture->makeAppearance("capitals"));
        writeFavorite("d.txt", m_fixture->makeAppearance("text"));
        m_fixture->write("favorites/Favorite Library/e.json", R"({"id":"half","name":)");
        m_fixture->write("favorites/Favorite Library/f.ggm", "no archive");
        kiv::CAppearanceParser archive(m_fixture->manager());
        QVERIFY(archive.AppearanceToZipFile(m_fixture->makeAppearance("packed"),
                                            m_fixture->widePath("favorites/Favorite Library/g.ggm")));
        QVERIFY(QDir().mkpath(m_fixture->path("favorites/Favorite Library/folder.json")));

        QString texts;
        int maximum = 0;
        ModalMeeting<QProgressDialog> meeting(
            [&](QProgressDialog& progress) {
                texts = progress.windowTitle() + '|' + progress.labelText() + '|' +
                        progress.findChild<QPushButton*>()->text();
                maximum = progress.maximum();
            },
            true);
        TestedDialog dialog(*m_fixture, true);
        emit dialog.system()->OnMaterialLibraryChange("Favorite Library");
        QCOMPARE(favoriteIds(), QStringList());
        dialog.show();
        QTRY_COMPARE(favoriteIds(), QStringList({"first", "packed"}));
        QCOMPARE(favorites()->FindInstance("first")->GetDiffuseTexture()->GetTextureFile(), kiv::String());
        QTRY_VERIFY(dialog.rowOf(dialog.system(), "packed") >= 0);
        QCOMPARE(texts, QString(u8"请稍等|正在载入我的材质......|取消"));
        QCOMPARE(maximum, 5);
        QTRY_VERIFY(!QApplication::activeModalWidget());
    }

    // A file need not be named after the favourite that it holds.
    void removesTheFileThatWasRead()
    {
        writeFavorite("other.json", m_fixture->makeAppearance("fav"));
        writeFavorite("fav.json", m_fixture->makeAppearance("innocent"));
        kiv::CAppearanceParser archive(m_fixture->manager());
        QVERIFY(archive.AppearanceToZipFile(m_fixture->makeAppearance("packed"),
                                            m_fixture->widePath("favorites/Favorite Library/g.ggm")));
        m_fixture->write("textures/red.png", makePicture(Qt::red, "PNG"));
        TestedDialog dialog(*m_fixture, true);
        dialog.LoadApperanceLibrary(m_fixture->widePath("favorites"), "Favorite Library");
        // As another dialog of the process would.
        QVERIFY(favorites()->AddInstance(kiv::CMaterialHelper::AddFavorite(
            m_fixture->makeAppearance("source", "red.png"), "Stone", m_fixture->manager(), &m_fixture->library())));
        QStringList ids = favoriteIds();
        QCOMPARE(ids.size(), 4);
        ids.removeOne("innocent");
        for (const QString& id : ids)
            remove(dialog, id);
        QCOMPARE(favoriteIds(), QStringList("innocent"));
        QCOMPARE(files("favorites/Favorite Library"), QStringList("fav.json"));
        QCOMPARE(files("favorites/UserLib Textures").size(), 1);
    }

    void tellsOnceWhatCannotBeRemoved()
    {
        SmallDisk disk(m_fixture->path("favorites"));
        writeMany(2);
        TestedDialog dialog(*m_fixture, true);
        dialog.LoadApperanceLibrary(m_fixture->widePath("favorites"), "Favorite Library");
        emit dialog.system()->OnMaterialLibraryChange("Favorite Library");
        if (!disk.MakeReadOnly())
            QSKIP("nothing stops this process from writing");
        QStringList texts;
        ModalMeeting<QMessageBox> meeting([&](QMessageBox& box) { texts += box.text(), box.reject(); }, true);
        for (const char* id : {"0", "1"})
            remove(dialog, id);
        QVERIFY(texts.isEmpty());
        QTRY_VERIFY(!texts.isEmpty() && !QApplication::activeModalWidget());
        QCOMPARE(texts.size(), 1);
        const QRegularExpression form(QString(u8"^无法移除：(\n.*：.{10,}){2}$"));
        QVERIFY2(form.match(texts[0]).hasMatch(), qPrintable(texts[0]));
        QCOMPARE(favoriteIds(), QStringList({"0", "1"}));
        QVERIFY(dialog.rowOf(dialog.system(), "0") >= 0);
    }

    void findsTexturesInTheFavoritesFolder()
    {
        const QDir folder(m_fixture->path("favorites/Favorite Library"));
        QVERIFY(folder.mkpath("CloudLib") && folder.mkpath("Sub"));
        const std::string root = m_fixture->path("favorites").toStdString() + "\\Favorite Library\\";
        const struct {
            const char* stored;
            std::string expected;
        } cases[] = {
            {"there.png", root + "there.png"},
            {"Sub\\there.png", root + "Sub\\there.png"},
            {"/somewhere/else/Sub/there.png", root + "/Sub/there.png"},
            {"C:\\Users\\me\\Sub\\there.png", root + "\\Sub\\there.png"},
            {"Sub\\missing.png", "Sub\\missing.png"},
            {"Gone\\there.png", "Gone\\there.png"},
            {"..\\..\\there.png", "..\\..\\there.png"},
        };
        TestedDialog dialog(*m_fixture, true);
        m_fixture->write("there.png", "above the favourites");
        m_fixture->write("favorites/Favorite Library/there.png", "x");
        m_fixture->write("favorites/Favorite Library/Sub/there.png", "x");
        for (const auto& row : cases)
            writeFavorite(QString::number(&row - cases) + ".json",
                          m_fixture->makeAppearance(std::to_string(&row - cases), row.stored));
        dialog.LoadApperanceLibrary(m_fixture->widePath("favorites"), "Favorite Library");
        for (const auto& row : cases) {
            const auto appearance = favorites()->FindInstance(std::to_string(&row - cases));
            QVERIFY(appearance);
            QCOMPARE(appearance->GetDiffuseTexture()->GetTextureFile(), row.expected);
        }
    }

    void emptyFolderShowsNoProgress()
    {
        ModalMeeting<QWidget> meeting([](QWidget&) {});
        TestedDialog dialog(*m_fixture, true);
        dialog.show();
        QTRY_COMPARE(dialog.loadCalls, 1);
        QVERIFY(!meeting.met);
        QVERIFY(QDir(m_fixture->path("favorites/Favorite Library")).exists());
    }

    void withoutCloudNothingIsLoaded()
    {
        writeMany(1);
        TestedDialog dialog(*m_fixture, false);
        dialog.show();
        QTRY_COMPARE(dialog.loadCalls, 1);
        QCOMPARE(favoriteIds(), QStringList());
    }

    void cancelKeepsWhatIsLoaded()
    {
        constexpr int count = 3000;
        writeMany(count);
        TestedDialog dialog(*m_fixture, true);
        ModalMeeting<QProgressDialog> meeting(
            [](QProgressDialog& progress) {
                if (progress.value() > 0)
                    QTest::mouseClick(progress.findChild<QPushButton*>(), Qt::LeftButton);
            },
            true);
        dialog.LoadApperanceLibrary(m_fixture->widePath("favorites"), "Favorite Library");
        const int loaded = int(favorites()->count());
        QVERIFY2(loaded > 0 && loaded < count, qPrintable(QString::number(loaded)));
        QVERIFY(!QApplication::activeModalWidget());
        meeting.met = false;
        dialog.LoadApperanceLibrary(m_fixture->widePath("favorites"), "Favorite Library");
        QVERIFY(int(favorites()->count()) > loaded || meeting.met);
    }

    void tellsOnceWhatCannotBeRead()
    {
        constexpr int count = 10000, broken = 100;
        const QByteArray text = m_fixture->document(m_fixture->makeAppearance("NUMBER"));
        for (int i = 0; i < count; ++i) {
            const QByteArray number = QByteArray::number(i).rightJustified(5, '0');
            const QByteArray whole = QByteArray(text).replace("NUMBER", number);
            const bool isBroken = i % (count / broken) == 7;
            m_fixture->write("favorites/Favorite Library/" + number + ".json",
                             isBroken ? whole.left(whole.size() / 2) : whole);
        }
        const QByteArray endless = '"' + QByteArray(100000, 'k') + "\":1";
        m_fixture->write("favorites/Favorite Library/00007.json",
                         QByteArray(text).insert(text.indexOf('{') + 1, endless + ',' + endless + ','));
        TestedDialog dialog(*m_fixture, true);
        const auto* notice = dialog.findChild<QLabel*>("LabelNotice");
        QVERIFY(!notice->isVisibleTo(&dialog));
        int boxes = 0;
        ModalMeeting<QMessageBox> meeting([&](QMessageBox& box) { ++boxes, box.reject(); }, true);
        int most = 0;
        ModalMeeting<QProgressDialog> progress([&](QProgressDialog& bar) { most = qMax(most, bar.value()); }, true);
        dialog.LoadApperanceLibrary(m_fixture->widePath("favorites"), "Favorite Library");
        QCOMPARE(int(favorites()->count()), count - broken);
        QVERIFY(notice->isVisibleTo(&dialog));
        QCOMPARE(notice->text(), QString(u8"100 个收藏无法读取"));
        const QStringList details = notice->toolTip().split('\n');
        QCOMPARE(details.size(), 11);
        QVERIFY2(details[0].size() == 300 && details[0].endsWith(u8"k…"), qPrintable(details[0]));
        QVERIFY2(details[1].startsWith("00107.json") && details[1].contains("JSON"), qPrintable(details[1]));
        QCOMPARE(boxes, 0);
        QVERIFY(most > count / 2);
        // What was mended is not told of any more.
        QVERIFY(QDir(m_fixture->path("favorites/Favorite Library")).removeRecursively());
        dialog.LoadApperanceLibrary(m_fixture->widePath("favorites"), "Favorite Library");
        QVERIFY(!notice->isVisibleTo(&dialog));
    }

    void tellsOfAFolderThatCannotBeRead_data()
    {
        const auto row = testColumns<QString, QString>("root", "file");
        row("a file in its place", "", "favorites/Favorite Library");
        row("a file in the way", "", "favorites");
        row("a folder that nobody can make", "/proc/favorites", "");
    }

    void tellsOfAFolderThatCannotBeRead()
    {
        QFETCH(QString, root);
        QFETCH(QString, file);
        if (!file.isEmpty()) {
            QVERIFY(QDir(m_fixture->path("favorites")).removeRecursively());
            m_fixture->write(file, "no folder");
            root = m_fixture->path("favorites");
        }
        m_fixture->manager().SetFavoriteLibraryPath(root.toStdWString());
        {
            TestedDialog dialog(*m_fixture, true);
            ModalMeeting<QDialog> meeting([](QDialog& box) { box.reject(); });
            dialog.show();
            const auto* notice = dialog.findChild<QLabel*>("LabelNotice");
            QTRY_VERIFY(notice->isVisible());
            const QRegularExpression form(QString(u8"^收藏文件夹不可用：.{5,}$"));
            QVERIFY2(form.match(notice->text()).hasMatch(), qPrintable(notice->text()));
            QVERIFY(!meeting.met);
            QVERIFY(dialog.system()->GetTableWidget()->rowCount() > 0);
        }
        if (!file.isEmpty())
            QCOMPARE(m_fixture->read(file), QByteArray("no folder"));
    }

    void survivesBeingDeletedMeanwhile()
    {
        writeMany(3000);
        auto dialog = std::make_unique<TestedDialog>(*m_fixture, true);
        ModalMeeting<QProgressDialog> meeting([&](QProgressDialog&) { dialog.reset(); });
        dialog->LoadApperanceLibrary(m_fixture->widePath("favorites"), "Favorite Library");
        QVERIFY(!dialog);
        QVERIFY(int(favorites()->count()) < 3000);
    }

    void needsAFavoritesFolder()
    {
        m_fixture->manager().SetFavoriteLibraryPath({});
        TestedDialog dialog(*m_fixture, true);
        QStringList texts;
        ModalMeeting<QMessageBox> meeting([&](QMessageBox& box) {
            texts += {box.windowTitle(), box.text()};
            QTest::mouseClick(box.findChild<QPushButton*>(), Qt::LeftButton);
        });
        dialog.show();
        QTRY_VERIFY(!dialog.isVisible());
        QCOMPARE(texts, QStringList({u8"严重错误", u8"系统文件夹不完整,收藏功能不可用！"}));
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
    }

    void timersRunWhileVisible()
    {
        writeMany(2);
        TestedDialog dialog(*m_fixture, true);
        for (int shows = 1; shows <= 3; ++shows) {
            dialog.statusCalls = dialog.loadCalls = 0;
            dialog.show();
            QTRY_VERIFY(dialog.statusCalls > 0 && dialog.loadCalls > 0);
            QTRY_VERIFY(!QApplication::activeModalWidget());
            QCOMPARE(dialog.statusCalls % shows, 0);
            QCOMPARE(dialog.loadCalls, shows);
            dialog.hide();
        }
        // Hidden, it is quiet while another one ticks.
        dialog.statusCalls = dialog.loadCalls = 0;
        TestedDialog other(*m_fixture, true);
        other.show();
        QTRY_VERIFY(other.statusCalls > 3 && other.loadCalls > 0);
        QCOMPARE(dialog.statusCalls + dialog.loadCalls, 0);
    }

    void rebuildsTheCloudFolder()
    {
        const QString cloud = m_fixture->path("favorites/Favorite Library/CloudLib");
        m_fixture->write("favorites/Favorite Library/CloudLib/deep/old.png", "x");
        m_fixture->write("favorites/Favorite Library/kept.json", "x");
        TestedDialog dialog(*m_fixture, true);
        QVERIFY(!QDir(cloud).exists());
        QCOMPARE(m_fixture->read("favorites/Favorite Library/kept.json"), QByteArray("x"));
        dialog.show();
        QTRY_VERIFY(QDir(cloud).exists());
        QVERIFY(QDir(cloud).isEmpty());
        dialog.hide();

        QVERIFY(QDir(cloud).removeRecursively());
        m_fixture->write("mine/picture.png", "x");
        QVERIFY(QFile::link(m_fixture->path("mine"), cloud));
        TestedDialog linked(*m_fixture, true);
        QVERIFY(!QFileInfo(cloud).isSymLink());
        QCOMPARE(m_fixture->read("mine/picture.png"), QByteArray("x"));
    }

    // Thousands of files go behind the dialog's back, and so does what a lost process left of them.
    void clearsALargeCloudFolder()
    {
        for (int i = 0; i < 1000; ++i)
            m_fixture->write(QString("favorites/Favorite Library/CloudLib/deep/%1.json").arg(i), "{}");
        m_fixture->write("favorites/.removed-before/old.json", "{}");
        m_fixture->write("favorites/.removed", "a file of the user");
        m_fixture->write("mine/picture.png", "x");
        QVERIFY(QFile::link(m_fixture->path("mine"), m_fixture->path("favorites/.removed-link")));
        const TestedDialog dialog(*m_fixture, true);
        QVERIFY(!QDir(m_fixture->path("favorites/Favorite Library/CloudLib")).exists());
        QTRY_COMPARE(
            QDir(m_fixture->path("favorites")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
            QStringList({".removed", ".removed-link", "Favorite Library"}));
        QCOMPARE(m_fixture->read("mine/picture.png"), QByteArray("x"));
    }

private:
    void remove(TestedDialog& dialog, const QString& id) const
    {
        kiv::CAppearanceInstancePtr favorite = favorites()->FindInstance(id.toStdString());
        emit dialog.system()->OnRemoveApperance(favorite);
    }
    QStringList files(const char* folder) const { return QDir(m_fixture->path(folder)).entryList(QDir::Files); }
    void writeFavorite(const QString& file, const kiv::CAppearanceInstancePtr& appearance)
    {
        m_fixture->write("favorites/Favorite Library/" + file, m_fixture->document(appearance));
    }
    void writeMany(int count)
    {
        for (int i = 0; i < count; ++i)
            writeFavorite(QString("%1.json").arg(i), m_fixture->makeAppearance(std::to_string(i)));
    }
    kiv::CAppearanceLibraryPtr favorites() const
    {
        return m_fixture->manager().FindUserAppearanceLibrary("Favorite Library");
    }
    QStringList favoriteIds() const
    {
        QStringList ids;
        for (const auto& entry : *favorites())
            ids += QString::fromStdString(entry.first);
        return ids;
    }

    std::unique_ptr<DialogFixture> m_fixture;
};

int main(int argc, char** argv)
{
    SmallDisk::Prepare();
    return runMaterialTest(argc, argv, []() -> QObject& {
        static TestFavoriteLoading test;
        return test;
    });
}
#include "TestFavoriteLoading.moc"
