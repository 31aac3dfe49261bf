#include "CloudTest.h"

#include <FaultServer.h>
#include <TestFiles.h>

#include <nuvs/NUVSCloudSettings.h>

#include <QElapsedTimer>
#include <QProcess>

#include <thread>

using namespace CloudRequests;

namespace {

constexpr int ThreadCount = 4;
constexpr int RoundCount = 10;  // of five requests each

// A callback that gives up its reply as soon as something was sent.
class CImpatientUpload : public NUVSCallback<NUVSCloudUploadFile> {
public:
    struct Seen {
        std::mutex mutex;
        std::condition_variable changed;
        QStringList endings;
        bool deleted = false;
    };

    explicit CImpatientUpload(const std::shared_ptr<Seen>& seen) : m_seen(seen) {}
    ~CImpatientUpload() override
    {
        const std::lock_guard<std::mutex> lock(m_seen->mutex);
        m_seen->deleted = true;
        m_seen->changed.notify_all();
    }

    void onUploadProgress(qint64 /*sent*/, qint64 /*total*/) override { reset(); }
    void onFinished(NUVSCloudUploadFile /*result*/) override { End("finished"); }
    void onTimeOut() override { End("time-out"); }
    void onError(QNetworkReply::NetworkError /*error*/) override { End("error"); }

private:
    void End(const char* ending)
    {
        const std::lock_guard<std::mutex> lock(m_seen->mutex);
        m_seen->endings.append(ending);
    }

    std::shared_ptr<Seen> m_seen;
};

// What one of several threads does; how each request ended.
QStringList makeRequests(const QString& folder, const QString& here, int thread)
{
    QStringList told;
    for (int i = 0; i < RoundCount; ++i) {
        const QString name = QString("%1-%2.json").arg(thread).arg(i);
        const auto listing = Children(folder);
        const auto upload = Upload(folder, here + '/' + name);
        const auto made = CreateFolder(QString("folder %1 %2").arg(thread).arg(i), folder);
        const auto root = Children();
        const auto sent = upload.Wait();
        const auto download = Download(sent.result.id, here + "/back " + name);
        told << listing.Wait().Told() << sent.Told() << made.Wait().Told() << root.Wait().Told()
             << download.Wait().Told();
    }
    return told;
}

std::function<QStringList()> nothingUnderWay()
{
    return [] { return QStringList(); };
}

// Begins a transfer in each direction; what is answered waits for them. Few, since Qt has six connections only.
std::function<QStringList()> begin(const QString& folder, const QString& file, const QString& here)
{
    const auto upload = Upload(folder, writeFile(here + "/b.json", "{}"));
    const auto download = Download(file, here + "/a.json");
    return [=] { return QStringList{upload.Wait().Told(), download.Wait().Told()}; };
}

}  // namespace

class TestCloudThreads : public CCloudTest {
    Q_OBJECT

private slots:
    void requestsOfManyThreadsEndOnce_data()
    {
        QTest::addColumn<bool>("local");
        QTest::newRow("server") << false;
        QTest::newRow("local folder") << true;
    }

    void requestsOfManyThreadsEndOnce()
    {
        QFETCH(bool, local);
        CFaultServer server;
        const QString here = NewFolder(), cloud = NewFolder();
        setNUVSCloudSettings({20 * 1000, cloud});
        QCOMPARE(Login({server.User, server.Password, local ? QString() : server.GetAddress()}).Wait().Told(),
                 QString("done"));
        const QString folder = CreateFolder("JsonFiles").Wait().result.id;
        for (int thread = 0; thread < ThreadCount; ++thread)
            for (int i = 0; i < RoundCount; ++i)
                writeFile(QString("%1/%2-%3.json").arg(here).arg(thread).arg(i), someBytes(1000 * thread + i));

        QStringList told[ThreadCount];
        std::vector<std::thread> threads;
        threads.reserve(ThreadCount);
        for (int i = 0; i < ThreadCount; ++i)
            threads.emplace_back([&, i] { told[i] = makeRequests(folder, here, i); });
        for (std::thread& thread : threads)
            thread.join();
        for (QStringList& words : told) {
            QCOMPARE(words.size(), 5 * RoundCount);
            QCOMPARE(words.filter("done").size(), words.size());
        }
        const auto there = visibleTree((local ? cloud + "/alice" : server.GetFolder()) + "/KIV/JsonFiles");
        QCOMPARE(there.size(), 2 * ThreadCount * RoundCount);
        const auto files = visibleTree(here);
        for (auto file = files.begin(); file != files.end(); ++file)
            QVERIFY2(there.value(QString(file.key()).remove("back ")) == file.value(), qPrintable(file.key()));
    }

    // Whoever logs out, or in anew, among requests under way gets an end to each, and to no session of before.
    void loginsAmongRequestsKeepTheirWord()
    {
        CFaultServer server;
        const CCloudAccount account{server.User, server.Password, server.GetAddress()};
        const QString path = writeFile(NewFolder() + "/a.json", someBytes(200 * 1000));
        for (int i = 0; i < RoundCount; ++i) {
            const auto login = Login(account);
            const auto before = Upload({}, path);
            const auto again = Login(account);
            const auto listing = Children();
            const auto logout = Logout();
            const auto after = Upload({}, path);
            for (const QString& told : {login.Wait().Told(), before.Wait().Told(), again.Wait().Told(),
                                        listing.Wait().Told(), logout.Wait().Told(), after.Wait().Told()})
                QVERIFY2(!told.startsWith("endings"), qPrintable(told));
            QVERIFY(!getNUVSCloudService()->accountService()->isLogin());
        }
    }

    void requestsOutliveTheirSession_data()
    {
        QTest::addColumn<bool>("listing");
        QTest::addColumn<bool>("lost");
        QTest::newRow("a listing that found it open") << true << false;
        QTest::newRow("a listing that found it lost") << true << true;
        QTest::newRow("transfers, open") << false << false;
        QTest::newRow("transfers, lost") << false << true;
    }

    // What is under way when its session is lost ends when another session was opened, and does not touch that.
    void requestsOutliveTheirSession()
    {
        QFETCH(bool, listing);
        QFETCH(bool, lost);
        CFaultServer server;
        const CCloudAccount account{server.User, server.Password, server.GetAddress()};
        const QString root = server.GetFolder() + "/KIV", here = NewFolder();
        writeFile(root + "/JsonFiles/a.json", "{}");
        QCOMPARE(Login(account).Wait().Told(), QString("done"));
        const QString folder = idOf("JsonFiles"), file = idOf("a.json", folder);
        const auto loseSession = [&] {
            for (const QString& mark : marksIn(root))
                QVERIFY(QDir(root + '/' + mark).removeRecursively());
        };
        if (lost)
            loseSession();
        server.GetScript().TakeLog();
        const int count = listing ? 1 : 3;
        server.GetScript().Add({CFault::HangInBody, "", "", 0, "", 0, count});
        const std::function<QStringList()> waitForTransfers = listing ? nothingUnderWay() : begin(folder, file, here);
        const auto children = Children(listing ? QString() : folder);
        QVERIFY(server.GetScript().WaitForRequests(count));
        loseSession();
        QCOMPARE(Children().Wait().Told(), QString("NUVS_000002"));
        QCOMPARE(Login(account).Wait().Told(), QString("done"));
        // While the server still keeps them waiting.
        for (const QString& told : waitForTransfers() + QStringList{children.Wait().Told()})
            QCOMPARE(told, QString("error"));
        server.GetScript().Clear();
        QVERIFY(getNUVSCloudService()->accountService()->isLogin());
        QCOMPARE(Children().Wait().Told(), QString("done"));
    }

    // Both find the session lost; the second one while the next is being opened.
    void twoRequestsFindTheSessionLost()
    {
        CFaultServer server;
        const CCloudAccount account{server.User, server.Password, server.GetAddress()};
        const QString root = server.GetFolder() + "/KIV";
        QCOMPARE(Login(account).Wait().Told(), QString("done"));
        for (int i = 0; i < RoundCount; ++i) {
            for (const QString& mark : marksIn(root))
                QVERIFY(QDir(root + '/' + mark).removeRecursively());
            const auto first = Children(), second = Children();
            QCOMPARE(first.Wait().Told(), QString("NUVS_000002"));
            const auto login = Login(account);
            const QString told = second.Wait().Told();
            QVERIFY2(told == "NUVS_000002" || told == "error", qPrintable(told));
            QCOMPARE(login.Wait().Told(), QString("done"));
            QCOMPARE(Children().Wait().Told(), QString("done"));
        }
    }

    void aCallbackMayGiveUpItsReply()
    {
        CFaultServer server;
        QCOMPARE(Login({server.User, server.Password, server.GetAddress()}).Wait().Told(), QString("done"));
        const QString path = writeFile(NewFolder() + "/a.png", someBytes(8 * 1000 * 1000));
        const auto seen = std::make_shared<CImpatientUpload::Seen>();
        getNUVSCloudService()->fileService()->upload({}, path, new CImpatientUpload(seen));
        std::unique_lock<std::mutex> lock(seen->mutex);
        QVERIFY(seen->changed.wait_for(lock, std::chrono::seconds(30), [&] { return seen->deleted; }));
        QCOMPARE(seen->endings, QStringList("error"));
        QCOMPARE(visibleTree(server.GetFolder()).keys(), QStringList("KIV/"));
    }

    // Each piece comes within the silence that is allowed, all of them do not.
    void slowIsNotSilent()
    {
        CFaultServer server;
        const CCloudAccount account{server.User, server.Password, server.GetAddress()};
        QCOMPARE(Login(account).Wait().Told(), QString("done"));
        const QByteArray bytes = someBytes(20 * 1000);
        writeFile(server.GetFolder() + "/KIV/a.png", bytes);
        setNUVSCloudSettings({1000, {}});
        server.GetScript().Add({CFault::Trickle, "GET"});
        const QString path = NewFolder() + "/a.png";
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(Download(idOf("a.png"), path).Wait().Told(), QString("done"));
        QVERIFY(clock.elapsed() > 1000);
        QVERIFY(readFile(path) == bytes);
    }

    void theProcessEndsInMidUpload_data()
    {
        QTest::addColumn<QString>("way");
        QTest::newRow("the application goes") << "upload";
        QTest::newRow("exit()") << "exit";
    }

    void theProcessEndsInMidUpload()
    {
        QFETCH(QString, way);
        CFaultServer server;
        const QString path = writeFile(NewFolder() + "/large.png", someBytes(20 * 1000 * 1000));
        server.GetScript().Add({CFault::Hang, "PUT"});
        QProcess helper;
        helper.start(CLOUD_HELPER, helperArguments(way, {server.User, server.Password, server.GetAddress()}, {}, path));
        QVERIFY(server.GetScript().WaitForRequests(1, "PUT"));
        QElapsedTimer clock;
        clock.start();
        helper.write("end\n");
        QVERIFY(helper.waitForFinished());
        QVERIFY2(clock.elapsed() < 5000, qPrintable(QString::number(clock.elapsed())));
        QCOMPARE(helper.exitStatus(), QProcess::NormalExit);
        QCOMPARE(helper.exitCode(), 0);
        QCOMPARE(helper.readAllStandardError(), QByteArray());
        const QByteArray said = helper.readAllStandardOutput();
        QVERIFY2(said == "login: done\nupload: error\nchildren: done\nafterwards: error\n" ||
                     said == "login: done\nupload: error\nchildren: error\nafterwards: error\n",
                 said.constData());
        server.GetScript().Clear();
        QCOMPARE(visibleTree(server.GetFolder()).keys(), QStringList("KIV/"));
    }
};

MATERIAL_TEST_MAIN(TestCloudThreads)

#include "TestCloudThreads.moc"
