#include "SynchronisationTest.h"

#include <CloudService.h>

namespace {

const QByteArray s_red = makePicture(Qt::red, "PNG");

}  // namespace

/// Removing a favourite takes its copies in the cloud away.
class TestRemovals : public CSynchronisationTest {
    Q_OBJECT

private:
    static bool isListed()
    {
        const CCloudIndex& index = CCloudService::Instance().GetIndex();
        return index.IsLoaded(CCloudIndex::Documents) && index.IsLoaded(CCloudIndex::Textures);
    }

    // Two of one texture and one without, here and in the cloud.
    static void stock(const CSyncedCloud& cloud, SyncedProfile& profile)
    {
        profile.keep("one", s_red);
        profile.keep("two", s_red);
        profile.keep("plain");
        SyncedAccount account = cloud.Account();
        SyncedDialog dialog(profile, &account);
        dialog.open();
        QCOMPARE(Synchronise(dialog), Counts(3, 0, 0));
    }

private slots:
    void textureGoesWithTheLastOfIt()
    {
        CFaultyCloud server;
        SyncedProfile profile;
        stock(server.cloud, profile);
        SyncedAccount account = server.cloud.Account();
        SyncedDialog dialog(profile, &account);
        dialog.open();
        QTRY_VERIFY(isListed());
        dialog.remove("one");
        QCOMPARE(profile.favoriteIds(), QStringList({"plain", "two"}));
        QTRY_COMPARE(server.cloud.Documents(), profile.documents());
        QTRY_VERIFY(IsIdle());
        QCOMPARE(server.cloud.Textures().size(), 1);
        dialog.remove("two");
        QTRY_VERIFY2(server.cloud.Documents().keys() == QStringList("plain.json"), qPrintable(dialog.lastCounts()));
        QTRY_COMPARE(server.cloud.Textures(), SyncedProfile::Files());
        QTRY_VERIFY(IsIdle());
        QCOMPARE(Synchronise(dialog).right(16), Counts(0, 0, 0).right(16));
        QCOMPARE(server.cloud.Documents(), profile.documents());
        QCOMPARE(profile.records(), profile.documents());
        QCOMPARE(server.cloud.Textures(), SyncedProfile::Files());
        QCOMPARE(profile.textures().size(), 1);  // a project may have it
    }

    void goesAfterTheNextLogin()
    {
        CFaultyCloud server;
        SyncedProfile profile;
        stock(server.cloud, profile);
        (void)CloudRequests::Logout().Wait();
        {
            SyncedDialog dialog(profile);
            dialog.open();
            dialog.remove("one");
        }
        QCOMPARE(server.cloud.Documents().size(), 3);
        SyncedAccount account = server.cloud.Account();
        SyncedDialog dialog(profile, &account);
        dialog.open();
        QTRY_COMPARE(server.cloud.Documents(), profile.documents());
        QCOMPARE(profile.favoriteIds(), QStringList({"plain", "two"}));
        (void)Synchronise(dialog);
        QCOMPARE(profile.favoriteIds(), QStringList({"plain", "two"}));
        Compare(server.cloud, profile);
    }

    void aRefusedRemovalIsTriedAgain()
    {
        CFaultyCloud server;
        SyncedProfile profile;
        stock(server.cloud, profile);
        SyncedAccount account = server.cloud.Account();
        {
            server.GetScript().Add({CFault::Status, "DELETE", "one.json", 423});
            SyncedDialog dialog(profile, &account);
            dialog.open();
            QTRY_VERIFY(isListed());
            dialog.remove("one");
            QTRY_COMPARE(dialog.lastCounts().count(QString(u8"同步失败：1")), 1);
        }
        QVERIFY(server.cloud.Documents().contains("one.json"));
        server.GetScript().Clear();
        SyncedDialog dialog(profile, &account);
        dialog.open();
        QTRY_COMPARE(server.cloud.Documents(), profile.documents());
        QCOMPARE(profile.favoriteIds(), QStringList({"plain", "two"}));
    }

    void whatIsCollectedAgainStays()
    {
        CFaultyCloud server;
        SyncedProfile profile;
        SyncedAccount account = server.cloud.Account();
        const auto source = profile.makeAppearance("source");
        const auto collect = [&](SyncedDialog& dialog) { return dialog.AddFavoriteAppearanceFunc(source, "Stone"); };
        QString id;
        {
            SyncedDialog dialog(profile, &account);
            dialog.open();
            QVERIFY(collect(dialog));
            id = profile.favoriteIds().value(0);
            QCOMPARE(Synchronise(dialog), Counts(1, 0, 0));
        }
        (void)CloudRequests::Logout().Wait();
        {
            SyncedDialog dialog(profile);
            dialog.open();
            dialog.remove(id);
            QVERIFY(collect(dialog));
        }
        SyncedDialog dialog(profile, &account);
        dialog.open();
        QTRY_VERIFY(isListed());
        (void)Synchronise(dialog);
        QCOMPARE(profile.favoriteIds(), QStringList(id));
        Compare(server.cloud, profile);
    }
};

MATERIAL_TEST_MAIN(TestRemovals)
#include "TestRemovals.moc"
