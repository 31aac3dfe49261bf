#include "SynchronisationTest.h"

#include <ModalMeeting.h>

#include <nuvs/NUVSCloudSettings.h>

#include <QDir>
#include <QMessageBox>
#include <QPushButton>
#include <QToolButton>

namespace {

constexpr int ShortSilenceMs = 500;

}  // namespace

/// How the dialog tells where the account stands, and what it asks.
class TestAccountState : public CSynchronisationTest {
    Q_OBJECT

private:
    struct Asked {
        QString title;
        QString text;
        bool isYesDefault = false;
        int times = 0;
    };

    static std::function<void(QMessageBox&)> answering(QMessageBox::StandardButton button, Asked& asked)
    {
        return [button, &asked](QMessageBox& box) {
            asked = {box.windowTitle(), box.text(), box.defaultButton() == box.button(QMessageBox::Yes),
                     asked.times + 1};
            QCOMPARE(int(box.standardButtons()), int(QMessageBox::Yes | QMessageBox::No));
            QTest::mouseClick(box.button(button), Qt::LeftButton);
        };
    }

    // Another session, or nobody's any more.
    static void takeSession(const CSyncedCloud& cloud, bool byAnother)
    {
        if (byAnother) {
            QCOMPARE(logInElsewhere(cloud.Elsewhere()), QByteArray("login: done\n"));
            return;
        }
        for (const QString& mark : marksIn(cloud.root))
            QVERIFY(QDir(cloud.root + '/' + mark).removeRecursively());
    }

private slots:
    void aLostSessionIsAskedFor_data()
    {
        QTest::addColumn<bool>("byAnother");
        QTest::addColumn<bool>("yes");
        QTest::newRow("another login, again") << true << true;
        QTest::newRow("another login, no more") << true << false;
        QTest::newRow("the mark is gone, again") << false << true;
        QTest::newRow("the mark is gone, no more") << false << false;
    }

    void aLostSessionIsAskedFor()
    {
        QFETCH(bool, byAnother);
        QFETCH(bool, yes);
        CFaultyCloud server;
        SyncedProfile profile;
        profile.keep("red", makePicture(Qt::red, "PNG"));
        SyncedAccount account = server.cloud.Account();
        SyncedDialog dialog(profile, &account);
        dialog.open();
        takeSession(server.cloud, byAnother);
        Asked asked;
        ModalMeeting<QMessageBox> meeting(answering(yes ? QMessageBox::Yes : QMessageBox::No, asked), true);
        // The button would log in at once, should a listing under way have noticed by now.
        dialog.SynchronizedCloudFunc();
        QTRY_COMPARE(asked.times, 1);
        QCOMPARE(asked.title, QString(u8"提示"));
        QCOMPARE(asked.text, QString(u8"当前账号在其他地方登录，是否重新登录？\n选择“否”将退出材质窗体"));
        QVERIFY(asked.isYesDefault);
        QTRY_COMPARE(dialog.isVisible(), yes);
        if (!yes)
            return;
        QTRY_VERIFY(IsIdle() && dialog.accountText() == QString(u8"在线"));
        (void)Synchronise(dialog);
        Compare(server.cloud, profile);
        QCOMPARE(asked.times, 1);
    }

    // In the middle of a synchronisation: what was not sent is not counted as sent.
    void aSessionLostInTheMiddle()
    {
        CFaultyCloud server;
        SyncedProfile profile;
        for (int i = 0; i < 4; ++i)
            profile.keep(QString::number(i));
        SyncedAccount account = server.cloud.Account();
        SyncedDialog dialog(profile, &account);
        dialog.open();
        Asked asked;
        ModalMeeting<QMessageBox> meeting(answering(QMessageBox::Yes, asked), true);
        dialog.pressSynchronize();
        QTRY_VERIFY(!server.cloud.Documents().isEmpty());
        takeSession(server.cloud, true);
        QTRY_COMPARE(asked.times, 1);
        QTRY_VERIFY(IsIdle() && dialog.accountText() == QString(u8"在线"));
        QVERIFY(!dialog.lastCounts().startsWith(QString(u8"同步成功：4")));
        (void)Synchronise(dialog);
        Compare(server.cloud, profile);
        QCOMPARE(asked.times, 1);
    }

    // The host opened the session itself, without a hook.
    void withoutAHookNothingIsAsked()
    {
        CFaultyCloud server;
        SyncedProfile profile;
        profile.keep("one");
        const CSyncedCloud& cloud = server.cloud;
        CMaterialLibraryWidget::Login(cloud.user, cloud.password, cloud.address, "KIV", true);
        QTRY_VERIFY(CMaterialLibraryWidget::IsLogin());
        SyncedDialog dialog(profile);
        dialog.show();
        QTRY_COMPARE(dialog.accountText(), QString(u8"在线"));
        takeSession(cloud, false);
        Asked asked;
        ModalMeeting<QMessageBox> meeting(answering(QMessageBox::No, asked), true);
        QTRY_VERIFY(dialog.loadCalls > 0 && dialog.synchronizeButton()->isEnabled());
        dialog.pressSynchronize();
        QTRY_COMPARE(dialog.accountText(), QString(u8"离线"));
        const int calls = dialog.statusCalls;
        QTRY_VERIFY(dialog.statusCalls > calls + 2);
        QCOMPARE(asked.times, 0);
        QVERIFY(dialog.isVisible());
        QVERIFY(!dialog.synchronizeButton()->isEnabled());
    }

    void silenceIsToldUntilTheNextAnswer()
    {
        CFaultyCloud server;
        SyncedProfile profile;
        profile.keep("one");
        SyncedAccount account = server.cloud.Account();
        SyncedDialog dialog(profile, &account);
        dialog.open();
        setNUVSCloudSettings({ShortSilenceMs, {}});
        server.GetScript().Add({CFault::Hang, "PROPFIND"});
        dialog.pressSynchronize();
        QTRY_COMPARE(dialog.accountText(), QString(u8"超时"));
        QTRY_VERIFY(IsIdle());
        const int calls = dialog.statusCalls;
        QTRY_VERIFY(dialog.statusCalls > calls + 2);
        QCOMPARE(dialog.accountText(), QString(u8"超时"));
        server.GetScript().Clear();
        setNUVSCloudSettings({20 * 1000, {}});
        QCOMPARE(Synchronise(dialog), Counts(1, 0, 0));
        QCOMPARE(dialog.accountText(), QString(u8"在线"));
        Compare(server.cloud, profile);
    }

    // A password that is refused leaves no session and no question.
    void aRefusedLoginStaysOffline()
    {
        CFaultyCloud server;
        SyncedProfile profile;
        profile.keep("one");
        SyncedAccount account(CFaultServer::User, "no sesame", server.GetAddress());
        Asked asked;
        ModalMeeting<QMessageBox> meeting(answering(QMessageBox::Yes, asked), true);
        SyncedDialog dialog(profile, &account);
        dialog.show();
        QTRY_VERIFY(dialog.loadCalls > 0 && dialog.statusCalls > 3);
        dialog.pressSynchronize();
        const int calls = dialog.statusCalls;
        QTRY_VERIFY(dialog.statusCalls > calls + 3);
        QCOMPARE(dialog.accountText(), QString(u8"离线"));
        QCOMPARE(dialog.countsText(), QString());
        QCOMPARE(asked.times, 0);
        QCOMPARE(account.asked, 2);
    }
};

MATERIAL_TEST_MAIN(TestAccountState)
#include "TestAccountState.moc"
