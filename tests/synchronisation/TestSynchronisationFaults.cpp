#include "SynchronisationTest.h"

#include <ModalMeeting.h>

#include <CloudService.h>

#include <nuvs/NUVSCloudSettings.h>

#include <QDir>
#include <QMessageBox>
#include <QProcess>
#include <QToolButton>

namespace {

constexpr int ShortSilenceMs = 500;

struct Fault {
    const char* name;
    CFault::Kind kind;
    int status;
};

const Fault s_faults[] = {
    {"401", CFault::Status, 401},   {"403", CFault::Status, 403}, {"404", CFault::Status, 404},
    {"405", CFault::Status, 405},   {"409", CFault::Status, 409}, {"423", CFault::Status, 423},
    {"500", CFault::Status, 500},   {"507", CFault::Status, 507}, {"hang", CFault::Hang, 0},
    {"cut", CFault::LongLength, 0}, {"close", CFault::Close, 0},  {"close after", CFault::CloseAfter, 0}};

struct Place {
    const char* name;
    const char* method;
    const char* path;
    int skip;  // a favourite's first transfer is its document, the second its texture
};

const Place s_places[] = {{"document", "PUT", "", 0},          {"its place", "MOVE", "", 0},
                          {"texture", "PUT", "", 1},           {"the texture's place", "MOVE", "", 1},
                          {"the root", "PROPFIND", "/KIV", 0}, {"a folder", "MKCOL", "JsonFiles", 0}};

}  // namespace

/// What goes wrong while favourites are sent costs nothing but another try.
class TestSynchronisationFaults : public CSynchronisationTest {
    Q_OBJECT

private:
    static void forgetCloud(const CSyncedCloud& cloud)
    {
        QDir(cloud.root + "/JsonFiles").removeRecursively();
        QDir(cloud.root + "/TextureFiles").removeRecursively();
    }

    // Where the session got lost in a way that the question did not bring back.
    static void logInAgain(SyncedDialog& dialog)
    {
        QTRY_VERIFY(!QApplication::activeModalWidget() &&
                    (SyncedDialog::IsLogin() || dialog.accountText() == QString(u8"离线")));
        if (!SyncedDialog::IsLogin())
            dialog.pressSynchronize();
        QTRY_VERIFY(SyncedDialog::IsLogin() && IsIdle());
    }

    static QByteArray picture(int number) { return makePicture(QColor(10, 20, number), "PNG"); }

private slots:
    void anotherTryCompletes_data()
    {
        QTest::addColumn<int>("place");
        for (const Place& place : s_places)
            QTest::newRow(place.name) << int(&place - s_places);
    }

    // One dialog lives through all of them, as a session with a bad server does.
    void anotherTryCompletes()
    {
        QFETCH(int, place);
        const Place& at = s_places[place];
        CFaultyCloud server;
        SyncedProfile profile;
        SyncedAccount account = server.cloud.Account();
        SyncedDialog dialog(profile, &account);
        dialog.open();
        ModalMeeting<QMessageBox> question(
            [](QMessageBox& box) { QTest::mouseClick(box.button(QMessageBox::Yes), Qt::LeftButton); }, true);
        for (const Fault& fault : s_faults) {
            const QString id = QString("after %1").arg(fault.name);
            profile.keep(id, picture(int(&fault - s_faults)));
            const auto documents = profile.documents();
            const auto textures = profile.textures();
            dialog.LoadApperanceLibrary(profile.widePath("favorites"), "Favorite Library");
            if (QByteArray("MKCOL") == at.method)
                forgetCloud(server.cloud);
            setNUVSCloudSettings({fault.kind == CFault::Hang ? ShortSilenceMs : 20 * 1000, {}});
            server.GetScript().Add({fault.kind, at.method, at.path, fault.status, {}, at.skip});
            const QString ended = Synchronise(dialog);
            QVERIFY2(IsIdle(), fault.name);
            const bool isWhole =
                server.cloud.Documents().contains(id + ".json") &&
                server.cloud.Textures().contains(SyncedProfile::textureName(picture(int(&fault - s_faults))));
            QVERIFY2(isWhole || !ended.startsWith(QString(u8"同步成功：1")), qPrintable(id + ' ' + ended));
            server.GetScript().Clear();
            setNUVSCloudSettings({20 * 1000, {}});
            logInAgain(dialog);
            (void)Synchronise(dialog);
            QCOMPARE(profile.documents(), documents);
            QCOMPARE(profile.textures(), textures);
            QVERIFY2(server.cloud.Documents().contains(id + ".json"), qPrintable(id));
            if (QByteArray("MKCOL") != at.method)
                Compare(server.cloud, profile);
        }
    }

    // The document is there, its texture never came: that is no favourite that another machine could use.
    void aTextureThatFailedIsSentByTheNextDialog()
    {
        CFaultyCloud server;
        SyncedProfile profile;
        profile.keep("red", makePicture(Qt::red, "PNG"));
        SyncedAccount account = server.cloud.Account();
        server.GetScript().Add({CFault::Status, "PUT", {}, 507, {}, 1});
        {
            SyncedDialog dialog(profile, &account);
            dialog.open();
            QCOMPARE(Synchronise(dialog), Counts(0, 1, 0));
        }
        QCOMPARE(server.cloud.Documents(), profile.documents());
        QVERIFY(server.cloud.Textures().isEmpty());
        server.GetScript().Clear();
        SyncedDialog dialog(profile, &account);
        dialog.open();
        QTRY_VERIFY(CCloudService::Instance().GetIndex().IsLoaded(CCloudIndex::Textures));
        QTRY_COMPARE(profile.records(), profile.documents());
        QCOMPARE(Synchronise(dialog), Counts(1, 0, 0));
        Compare(server.cloud, profile);
    }

    // The dialog goes while an upload hangs; the server goes on with nobody there, and the next dialog carries on.
    void theDialogMayGoInTheMiddle()
    {
        CFaultyCloud server;
        SyncedProfile profile;
        for (int i = 0; i < 4; ++i)
            profile.keep(QString::number(i), picture(i));
        const auto documents = profile.documents();
        SyncedAccount account = server.cloud.Account();
        for (const int before : {0, 1}) {
            (void)server.TakeRequests();
            server.GetScript().Add({CFault::Hang, "PUT", {}, 0, {}, before, 1});
            auto dialog = std::make_unique<SyncedDialog>(profile, &account);
            dialog->open();
            if (IsIdle())
                dialog->pressSynchronize();
            QTRY_VERIFY(server.CountAsked("PUT") > before);
            dialog->close();
            dialog.reset();
            server.GetScript().Clear();
        }
        SyncedDialog dialog(profile, &account);
        dialog.open();
        QTRY_VERIFY(IsIdle());
        (void)Synchronise(dialog);
        QCOMPARE(profile.documents(), documents);
        Compare(server.cloud, profile);
    }
};

MATERIAL_TEST_MAIN(TestSynchronisationFaults)
#include "TestSynchronisationFaults.moc"
