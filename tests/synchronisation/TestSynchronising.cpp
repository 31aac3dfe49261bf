#include "SynchronisationTest.h"

#include <TestFiles.h>
#include <WebDavServer.h>

#include <AppearanceLibraryBrowserCtrl.h>
#include <CloudService.h>

#include <kiv/system/Connectivity.h>

#include <QDir>
#include <QToolButton>
#include <QUrl>

/// Favourites go to the account, with the button that a person presses.
class TestSynchronising : public CSynchronisationTest {
    Q_OBJECT

private:
    static void keepFavorites(SyncedProfile& profile)
    {
        profile.keep("plain");
        profile.keep("red", makePicture(Qt::red, "PNG"));
        profile.keep(u8"石 %41#", makePicture(Qt::blue, "PNG"), u8"花岗岩“浅”");
        profile.keep("red again", makePicture(Qt::red, "PNG"), u8"同一张图");
    }

    static QStringList methodsOf(const QStringList& requests)
    {
        QStringList methods;
        for (const QString& request : requests)
            methods += request.section(' ', 0, 0);
        return methods;
    }

    // What the first synchronisation of an account, a second one and one after a change do; the same with each server.
    static void mirror(const CSyncedCloud& cloud, const std::function<QStringList()>& sent)
    {
        SyncedProfile profile;
        keepFavorites(profile);
        const auto before = profile.documents();
        SyncedAccount account = cloud.Account();
        SyncedDialog dialog(profile, &account);
        dialog.open();
        QCOMPARE(dialog.countsText(), QString());
        dialog.pressSynchronize();
        QCOMPARE(dialog.countsText(), Counts(0, 0, 4));
        QTRY_VERIFY(IsIdle() && dialog.countsText().isEmpty());
        QCOMPARE(dialog.lastCounts(), Counts(4, 0, 0));
        QCOMPARE(profile.documents(), before);
        Compare(cloud, profile);

        (void)sent();
        QCOMPARE(Synchronise(dialog), Counts(4, 0, 0));
        QCOMPARE(sent(), QStringList());

        profile.keep("plain", {}, "another name");
        QCOMPARE(Synchronise(dialog), Counts(1, 0, 0));
        QCOMPARE(sent().size() <= 1, true);
        Compare(cloud, profile);
    }

private slots:
    void reallyUsedServersMirrorTheFavorites_data()
    {
        QTest::addColumn<int>("program");
        QTest::newRow("rclone") << int(CWebDavSettings::Rclone);
        QTest::newRow("Apache") << int(CWebDavSettings::Apache);
    }

    void reallyUsedServersMirrorTheFavorites()
    {
        QFETCH(int, program);
        CWebDavSettings settings;
        settings.program = CWebDavSettings::Program(program);
        settings.place = NewFolder();
        QFile::setPermissions(settings.place, QFile::permissions(settings.place) | QFile::ExeOther);
        if (!CWebDavServer::IsInstalled(settings.program))
            QSKIP("not installed");
        CWebDavServer server(settings);
        QVERIFY2(server.GetError().isEmpty(), qPrintable(server.GetError()));
        mirror({settings.user, settings.password, server.GetAddress(), server.GetFolder() + "/KIV"},
               [] { return QStringList(); });
    }

    void aLocalFolderMirrorsTheFavorites()
    {
        const QString folder = NewFolder();
        mirror({"alice", "", QUrl::fromLocalFile(folder).toString(), folder + "/KIV"}, [] { return QStringList(); });
    }

    void onlyWhatChangedIsSent()
    {
        CFaultyCloud server;
        mirror(server.cloud, [&] { return server.TakeRequests("PUT"); });
    }

    void aFavoriteCostsItsTransfersAndNothingElse()
    {
        CFaultyCloud server;
        SyncedProfile profile;
        keepFavorites(profile);
        SyncedAccount account = server.cloud.Account();
        SyncedDialog dialog(profile, &account);
        dialog.open();
        QTRY_VERIFY(methodsOf(server.TakeRequests()).isEmpty());
        QCOMPARE(Synchronise(dialog), Counts(4, 0, 0));
        const QStringList requests = server.TakeRequests();
        QCOMPARE(requests.filter("MKCOL"), QStringList({"MKCOL /dav/KIV/TextureFiles/", "MKCOL /dav/KIV/JsonFiles/"}));
        // Three of the four have a texture.
        const QStringList methods = methodsOf(requests);
        QCOMPARE(methods.count("PUT"), 7);
        QCOMPARE(methods.count("MOVE"), 7);
        QVERIFY(methods.lastIndexOf("MKCOL") < methods.indexOf("PUT"));
        // Three questions as the folders are made; opening and pressing each list two folders: root, mark and folder.
        // A fourth question for each favourite would be more.
        QVERIFY2(methods.size() < 2 + 14 + 3 + 12 + 4, qPrintable(requests.join('\n')));
    }

    // A press without a session logs in first, and what was asked for is done then.
    void logsInFirst()
    {
        CFaultyCloud server;
        SyncedProfile profile;
        keepFavorites(profile);
        SyncedAccount account = server.cloud.Account();
        account.isThere = false;
        SyncedDialog dialog(profile, &account);
        dialog.open();
        account.isThere = true;
        dialog.pressSynchronize();
        QTRY_COMPARE(dialog.accountText(), QString(u8"在线"));
        QTRY_COMPARE(dialog.lastCounts(), Counts(4, 0, 0));
        Compare(server.cloud, profile);
    }

    void aSecondPressWaitsForTheFirst()
    {
        CFaultyCloud server;
        SyncedProfile profile;
        profile.keep("one");
        profile.keep("two");
        SyncedAccount account = server.cloud.Account();
        SyncedDialog dialog(profile, &account);
        dialog.open();
        server.GetScript().Add({CFault::Hang, "PUT"});
        dialog.pressSynchronize();
        QTRY_COMPARE(server.CountAsked("PUT"), 1);
        profile.keep("three");
        dialog.LoadApperanceLibrary(profile.widePath("favorites"), "Favorite Library");
        const int calls = dialog.statusCalls;
        dialog.pressSynchronize();
        QTRY_VERIFY(dialog.statusCalls > calls + 3);
        QCOMPARE(dialog.countsText(), Counts(0, 0, 2));
        QCOMPARE(server.TakeRequests("PUT").size(), 1);
        server.GetScript().Clear();
        QTRY_COMPARE(dialog.lastCounts(), Counts(1, 1, 0));
        QCOMPARE(Synchronise(dialog), Counts(2, 0, 0));
        Compare(server.cloud, profile);
    }

    void leavesOutWhatHasNoTexture()
    {
        CFaultyCloud server;
        SyncedProfile profile;
        keepFavorites(profile);
        SyncedAccount account = server.cloud.Account();
        SyncedDialog dialog(profile, &account);
        dialog.open();
        const QString texture = SyncedProfile::textureName(makePicture(Qt::red, "PNG"));
        QVERIFY(QFile::remove(profile.path("favorites/UserLib Textures/" + texture)));
        QCOMPARE(Synchronise(dialog), Counts(2, 0, 0));
        QCOMPARE(server.cloud.Documents().keys(), QStringList({"plain.json", u8"石 %41#.json"}));
        QCOMPARE(server.cloud.Textures(), profile.textures());
    }

    void nothingIsSentWithoutANetwork()
    {
        CFaultyCloud server;
        SyncedProfile profile;
        keepFavorites(profile);
        SyncedAccount account = server.cloud.Account();
        SyncedDialog dialog(profile, &account);
        dialog.open();
        kiv::system::OverrideConnectivity(false);
        QTRY_COMPARE(dialog.accountText(), QString(u8"网络异常"));
        (void)server.TakeRequests();
        dialog.pressSynchronize();
        QVERIFY(IsIdle());
        const int calls = dialog.statusCalls;
        QTRY_VERIFY(dialog.statusCalls > calls + 2);
        QCOMPARE(server.CountAsked("PUT") + server.CountAsked("MKCOL"), 0);
        kiv::system::OverrideConnectivity(true);
        QTRY_COMPARE(dialog.accountText(), QString(u8"在线"));
        QCOMPARE(Synchronise(dialog), Counts(4, 0, 0));
        Compare(server.cloud, profile);
    }

    void withoutTheCloudNothingIsAsked()
    {
        CFaultyCloud server;
        SyncedProfile profile;
        keepFavorites(profile);
        SyncedAccount account = server.cloud.Account();
        SyncedDialog dialog(profile, &account, false);
        const QString before = dialog.accountText();
        dialog.show();
        QTRY_VERIFY(dialog.statusCalls > 3 && dialog.loadCalls > 0);
        QVERIFY(dialog.synchronizeButton()->isHidden());
        QVERIFY(dialog.system()->findChild<QToolButton*>("collectButton")->isHidden());
        QCOMPARE(dialog.accountText(), before);
        QCOMPARE(account.asked, 0);
        QCOMPARE(server.TakeRequests(), QStringList());
        QVERIFY(!QDir(profile.path("favorites/Favorite Library/CloudLib")).exists());
    }
};

MATERIAL_TEST_MAIN(TestSynchronising)
#include "TestSynchronising.moc"
