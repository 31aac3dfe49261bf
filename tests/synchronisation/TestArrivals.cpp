#include "SynchronisationTest.h"

#include <TestFiles.h>

#include <AppearanceLibraryBrowserCtrl.h>

#include <QColor>

namespace {

const QByteArray s_red = makePicture(Qt::red, "PNG");
const QByteArray s_blue = makePicture(Qt::blue, "PNG");

}  // namespace

/// What one machine sent comes to the others.
class TestArrivals : public CSynchronisationTest {
    Q_OBJECT

private:
    // An account to which another machine has sent these.
    static void stock(const CSyncedCloud& cloud, SyncedProfile& sender)
    {
        SyncedAccount account = cloud.Account();
        SyncedDialog dialog(sender, &account);
        dialog.open();
        QVERIFY(Synchronise(dialog).endsWith(QString(u8"同步失败：0  等待同步：0")));
        Compare(cloud, sender);
    }

    static void keepTwo(SyncedProfile& profile)
    {
        profile.keep("blue", s_blue);
        profile.keep("red", s_red, u8"红");
    }

private slots:
    void anotherMachineGetsAllOfIt()
    {
        CFaultyCloud server;
        SyncedProfile sender;
        keepTwo(sender);
        sender.keep("plain");
        stock(server.cloud, sender);

        SyncedProfile profile;
        profile.keep("own");
        SyncedAccount account = server.cloud.Account();
        SyncedDialog dialog(profile, &account);
        dialog.open();
        dialog.showFavorites();
        QTRY_COMPARE(profile.favoriteIds(), QStringList({"blue", "own", "plain", "red"}));
        QTRY_COMPARE(profile.textures(), sender.textures());
        auto documents = profile.documents();
        documents.remove("own.json");
        QCOMPARE(documents, sender.documents());
        QCOMPARE(profile.records(), sender.documents());
        QCOMPARE(Synchronise(dialog), Counts(1, 0, 0));
        QCOMPARE(server.cloud.Documents(), profile.documents());
    }

    void whatIsThereIsNotOverwritten()
    {
        CFaultyCloud server;
        SyncedProfile sender;
        keepTwo(sender);
        stock(server.cloud, sender);

        SyncedProfile profile;
        profile.keep("red", s_blue, "changed on this machine");
        const QByteArray own = profile.documents().value("red.json");
        SyncedAccount account = server.cloud.Account();
        SyncedDialog dialog(profile, &account);
        dialog.open();
        QTRY_COMPARE(profile.favoriteIds(), QStringList({"blue", "red"}));
        QCOMPARE(profile.documents().value("red.json"), own);
        QCOMPARE(Synchronise(dialog), Counts(1, 0, 0));
        QCOMPARE(profile.documents().value("red.json"), own);
        QCOMPARE(server.cloud.Documents(), profile.documents());
    }

    // It was selected before its picture was on this machine.
    void theAwaitedPictureShowsUp()
    {
        CFaultyCloud server;
        SyncedProfile sender;
        sender.keep("red", s_red);
        stock(server.cloud, sender);

        server.GetScript().Add({CFault::HangInBody, "GET", "TextureFiles"});
        SyncedProfile profile;
        SyncedAccount account = server.cloud.Account();
        SyncedDialog dialog(profile, &account);
        dialog.open();
        dialog.showFavorites();
        QTRY_VERIFY(dialog.rowOf(dialog.system(), "red") >= 0);
        dialog.clickRow(dialog.system(), "red");
        const auto isRed = [&] { return dialog.shownPixel().red() > 3 * dialog.shownPixel().green(); };
        QTRY_VERIFY(dialog.shownPixel().isValid());
        QTRY_VERIFY(server.CountAsked("GET") > 0);
        QVERIFY(!isRed());
        const QImage before = dialog.thumbnail("red");
        QCOMPARE(profile.textures(), SyncedProfile::Files());
        server.GetScript().Clear();
        QTRY_COMPARE(profile.textures(), sender.textures());
        QTRY_VERIFY(isRed());
        QTRY_VERIFY(dialog.thumbnail("red") != before);
    }

    void nothingBadGetsIn()
    {
        CFaultyCloud server;
        SyncedProfile sender;
        keepTwo(sender);
        stock(server.cloud, sender);
        const QString documents = server.cloud.root + "/JsonFiles/";
        const QString red = SyncedProfile::textureName(s_red);
        writeFile(documents + "bad.json", "{\"id\":\"bad\",\"name\":");
        writeFile(documents + "empty.json", "");
        writeFile(documents + "other.json", "{}");
        writeFile(documents + "another.json", readFile(documents + "red.json"));
        writeFile(documents + "huge.json", '[' + QByteArray(17 << 20, ' ') + ']');
        writeFile(documents + "folder.json/inside.json", "{}");
        writeFile(documents + "text.txt", "{}");
        writeFile(documents + ".json", "{}");
        writeFile(server.cloud.root + "/TextureFiles/" + red, "something else");
        server.GetScript().Add({CFault::Entry, "PROPFIND", "JsonFiles", 207, "/dav/KIV/JsonFiles/..%2f..%2fout.json"});

        SyncedProfile profile;
        SyncedAccount account = server.cloud.Account();
        SyncedDialog dialog(profile, &account);
        dialog.open();
        dialog.showFavorites();
        QTRY_COMPARE_WITH_TIMEOUT(profile.favoriteIds(), QStringList({"blue", "red"}), 30 * 1000);
        QTRY_COMPARE(profile.textures(), SyncedProfile::Files({{SyncedProfile::textureName(s_blue), s_blue}}));
        QTRY_VERIFY(AreDownloadsOver());
        QCOMPARE(profile.favoriteIds(), QStringList({"blue", "red"}));
        QCOMPARE(profile.documents().keys(), sender.documents().keys());
        QCOMPARE(profile.documents(), sender.documents());
        QCOMPARE(profile.records(), sender.documents());
        QVERIFY(!profile.textures().contains(red));
        QVERIFY(!QFile::exists(profile.path("out.json")) && !QFile::exists(profile.path("favorites/out.json")));
    }
};

MATERIAL_TEST_MAIN(TestArrivals)
#include "TestArrivals.moc"
