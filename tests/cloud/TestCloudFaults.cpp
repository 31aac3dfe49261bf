#include "CloudTest.h"

#include <FaultServer.h>
#include <TestFiles.h>

#include <nuvs/NUVSCloudSettings.h>

#include <QElapsedTimer>

#include <csignal>
#include <sys/resource.h>

using namespace CloudRequests;

namespace {

using Tree = QMap<QString, QByteArray>;

constexpr int ShortSilenceMs = 200;
const QByteArray s_stored = someBytes(2000 * 1000);

CFault fault(CFault::Kind kind, const QByteArray& method, const QString& path = {})
{
    return {kind, method, path};
}

CFault status(int status, const QByteArray& method, const QString& path = {})
{
    return {CFault::Status, method, path, status};
}

CFault body(const QByteArray& text, const QByteArray& method = "PROPFIND", const QString& path = {})
{
    return {CFault::Body, method, path, 207, text};
}

CFault times(int times, CFault fault)
{
    fault.times = times;
    return fault;
}

const QByteArray s_entities =
    "<?xml version=\"1.0\"?><!DOCTYPE m [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;\"><!ENTITY c "
    "\"&b;&b;&b;&b;&b;&b;&b;&b;\"><!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;\">]><D:multistatus xmlns:D=\"DAV:\">"
    "<D:response><D:href>/dav/KIV/&d;&d;&d;</D:href></D:response></D:multistatus>";

// What DELETE answers for a folder of which something had to stay.
const QByteArray s_halfDeleted =
    "<?xml version=\"1.0\"?><D:multistatus xmlns:D=\"DAV:\"><D:response><D:href>/dav/KIV/JsonFiles/old.json</D:href>"
    "<D:status>HTTP/1.1 423 Locked</D:status></D:response></D:multistatus>";

struct Row {
    CFault fault;
    const char* told;
};

QString methods(const QVector<CRequestRecord>& log)
{
    QStringList words;
    for (const CRequestRecord& record : log)
        words.append(record.method + (record.authorized ? "" : " without credentials"));
    return words.join(' ');
}

// A server with an account that has a folder with a file in it.
struct StockedServer : CFaultServer {
    CCloudAccount account{User, Password, GetAddress()};
    QString root = GetFolder() + "/KIV";
    QString stored = writeFile(root + "/JsonFiles/old.json", s_stored);
};

}  // namespace

Q_DECLARE_METATYPE(CFault)

class TestCloudFaults : public CCloudTest {
    Q_OBJECT

private:
    // Each operation on a folder that it must look for first, named as its rows are.
    QString Carry(const QString& operation, const CCloudAccount& account, const QString& here)
    {
        if (operation == "login")
            return Login(account).Wait().Told();
        if (operation == "children")
            return Children(m_folder).Wait().Told();
        if (operation == "createFolder")
            return CreateFolder("new", m_folder).Wait().Told();
        if (operation == "upload")
            return Upload(m_folder, here + "/new.json").Wait().Told();
        if (operation == "download")
            return Download(m_file, here + "/old.json").Wait().Told();
        return Delete(m_file).Wait().Told();
    }

    static void CheckDone(const QString& operation, const StockedServer& server, const QString& here)
    {
        const Tree there = visibleTree(server.root + "/JsonFiles");
        QCOMPARE(there.contains("new/"), operation == "createFolder");
        QCOMPARE(there.value("new.json"), operation == "upload" ? readFile(here + "/new.json") : QByteArray());
        QCOMPARE(there.contains("old.json"), operation != "deleteFile");
        QCOMPARE(readFile(here + "/old.json") == s_stored, operation == "download");
    }

    static void AddRows(const char* operation, const QVector<Row>& rows)
    {
        for (const Row& row : rows) {
            const QString name = QString("%1, %2 %3 %4 %5").arg(operation, row.fault.method, row.fault.path);
            QTest::newRow(qPrintable(name.arg(row.fault.kind).arg(row.fault.kind ? row.fault.times : row.fault.status)))
                << operation << row.fault << QString(row.told);
        }
    }

    // The answers to a request that asks for something or changes something.
    static QVector<Row> Refusals(const QByteArray& method, const QString& path, const char* notThere,
                                 const char* notAllowed = "NUVS_100003")
    {
        QVector<Row> rows = {{status(401, method, path), "NUVS_000002"},
                             {status(404, method, path), notThere},
                             {status(410, method, path), notThere},
                             {status(409, method, path), method == "DELETE" ? "NUVS_100003" : notThere},
                             {status(405, method, path), notAllowed},
                             {fault(CFault::Hang, method, path), "time-out"},
                             {fault(CFault::Close, method, path), "error"},
                             {{CFault::Redirect, method, path, 302, "http://127.0.0.2:9/dav/"}, "NUVS_000010"}};
        for (int code : {403, 423, 500, 507})
            rows.append({status(code, method, path), "NUVS_100003"});
        return rows;
    }

    // Of an answer with a body that must be read.
    static QVector<Row> Unreadable(const QByteArray& method, const QString& path)
    {
        return {{fault(CFault::HugeBody, method, path), "NUVS_100003"},
                {body(s_entities, method, path), "NUVS_100003"},
                {body("<D:multistatus xmlns:D=\"DAV:\"><D:response>", method, path), "NUVS_100003"},
                {body("<html>Welcome to the hotel</html>", method, path), "NUVS_100003"},
                {body(QByteArray("<a>").repeated(200000), method, path), "NUVS_100003"},
                {body("", method, path), "NUVS_100003"},
                {fault(CFault::ShortLength, method, path), "NUVS_100003"},
                {fault(CFault::LongLength, method, path), "error"},
                {fault(CFault::CutBody, method, path), "error"},
                {fault(CFault::HangInBody, method, path), "time-out"}};
    }

    // Of a transfer whatever is no success.
    static QVector<Row> Failures(const QByteArray& method, const QString& path)
    {
        QVector<Row> rows = {{status(401, method, path), "NUVS_000002"},
                             {fault(CFault::Hang, method, path), "time-out"},
                             {fault(CFault::Close, method, path), "error"},
                             {{CFault::Redirect, method, path, 302, "http://127.0.0.2:9/dav/"}, "error"}};
        for (int code : {403, 404, 409, 423, 500, 507})
            rows.append({status(code, method, path), "error"});
        return rows;
    }

private slots:
    void faultsEndInTheRightWay_data()
    {
        QTest::addColumn<QString>("operation");
        QTest::addColumn<CFault>("wrong");
        QTest::addColumn<QString>("told");
        AddRows("login", {{status(401, ""), "NUVS_000008"},
                          {status(403, ""), "NUVS_000008"},
                          {status(404, "PROPFIND"), "NUVS_000006"},
                          {status(500, "PROPFIND"), "NUVS_100003"},
                          {status(507, "MKCOL"), "NUVS_100003"},
                          {status(423, "MKCOL", ".session-"), "NUVS_100003"},
                          {fault(CFault::Hang, "PROPFIND"), "time-out"},
                          {fault(CFault::Hang, "MKCOL"), "time-out"},
                          {fault(CFault::Close, ""), "error"},
                          {fault(CFault::Close, "MKCOL"), "error"},
                          {{CFault::Redirect, "", {}, 302, "http://127.0.0.2:9/dav/"}, "NUVS_000010"}});
        AddRows("login", {{body(s_entities, "PROPFIND", "KIV"), "NUVS_100003"},
                          {fault(CFault::HugeBody, "PROPFIND", "KIV"), "NUVS_100003"}});
        AddRows("children", Refusals("PROPFIND", "JsonFiles", "NUVS_000006"));
        AddRows("children", Unreadable("PROPFIND", "JsonFiles"));
        AddRows("createFolder", Refusals("MKCOL", "new", "NUVS_000006", "NUVS_000001"));
        AddRows("createFolder", Unreadable("PROPFIND", "JsonFiles"));
        AddRows("deleteFile", Refusals("DELETE", "old.json", "NUVS_000005"));
        AddRows("deleteFile", {{body(s_halfDeleted, "DELETE", "old.json"), "NUVS_100003"}});
        AddRows("upload", Failures("PUT", {}));
        AddRows("upload", Failures("MOVE", {}));
        AddRows("upload", {{status(405, "PUT"), "error"},
                           {fault(CFault::CloseAfter, "PUT"), "error"},
                           {body(s_halfDeleted, "MOVE"), "error"},
                           {{CFault::OtherStatus, "MOVE", {}, 200}, "done"},
                           {status(405, "MOVE"), "done"},
                           {status(501, "MOVE"), "done"}});
        AddRows("download", Failures("GET", {}));
        AddRows("download", {{fault(CFault::CutBody, "GET"), "error"},
                             {fault(CFault::LongLength, "GET"), "error"},
                             {fault(CFault::HangInBody, "GET"), "time-out"},
                             {fault(CFault::ShortLength, "GET"), "error"}});
    }

    // One request meets a fault, and the same request is made again without it.
    void faultsEndInTheRightWay()
    {
        QFETCH(QString, operation);
        QFETCH(CFault, wrong);
        QFETCH(QString, told);
        StockedServer server;
        QCOMPARE(Login(server.account).Wait().Told(), QString("done"));
        m_folder = idOf("JsonFiles");
        m_file = idOf("old.json", m_folder);
        const QString here = NewFolder();
        writeFile(here + "/new.json", someBytes(300 * 1000));
        writeFile(here + "/old.json", "what was here before");
        const Tree remote = visibleTree(server.root), local = visibleTree(here);

        const bool hangs = wrong.kind == CFault::Hang || wrong.kind == CFault::HangInBody;
        setNUVSCloudSettings({hangs ? ShortSilenceMs : 20 * 1000, {}});
        if (operation == "login")
            QCOMPARE(Logout().Wait().Told(), QString("done"));
        server.GetScript().Add(wrong);
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(Carry(operation, server.account, here), told);
        QVERIFY2(!hangs || (clock.elapsed() > ShortSilenceMs * 9 / 10 && clock.elapsed() < 20 * ShortSilenceMs),
                 qPrintable(QString::number(clock.elapsed())));
        server.GetScript().Clear();
        const bool isOpen = operation != "login" && told != "NUVS_000002";
        QCOMPARE(getNUVSCloudService()->accountService()->isLogin(), isOpen);
        if (told != "done") {
            QCOMPARE(visibleTree(server.root), remote);
            QCOMPARE(visibleTree(here), local);
        }
        setNUVSCloudSettings({20 * 1000, {}});
        if (!isOpen)
            QCOMPARE(Login(server.account).Wait().Told(), QString("done"));
        QCOMPARE(Carry(operation, server.account, here), QString("done"));
        CheckDone(operation, server, here);
        // What an upload left behind is gone as well.
        QCOMPARE(Login(server.account).Wait().Told(), QString("done"));
        QCOMPARE(marksIn(server.root).size(), 1);
        QCOMPARE(QDir(server.root + '/' + marksIn(server.root)[0]).entryList(QDir::Files), QStringList());
    }

    // The answer to MOVE is lost: nobody knows, but what is there is whole.
    void aLostAnswerLeavesAWholeFile()
    {
        StockedServer server;
        QCOMPARE(Login(server.account).Wait().Told(), QString("done"));
        server.GetScript().Add(fault(CFault::CloseAfter, "MOVE"));
        const QString path = writeFile(NewFolder() + "/new.json", someBytes(5000));
        QCOMPARE(Upload(idOf("JsonFiles"), path).Wait().Told(), QString("error"));
        QCOMPARE(readFile(server.root + "/JsonFiles/new.json"), readFile(path));
    }

    // Nobody may replace the old file by half of a new one where the server cannot move. After silence the caller may
    // have done it anew.
    void withoutMoveABrokenUploadIsTakenAway()
    {
        StockedServer server;
        QCOMPARE(Login(server.account).Wait().Told(), QString("done"));
        const QString folder = idOf("JsonFiles");
        server.GetScript().Add(status(501, "MOVE"));
        server.GetScript().Add(times(1, fault(CFault::CloseAfter, "PUT", "new.json")));
        server.GetScript().Add(fault(CFault::Hang, "PUT", "old.json"));
        const QString path = writeFile(NewFolder() + "/new.json", someBytes(5000));
        QCOMPARE(Upload(folder, path).Wait().Told(), QString("error"));
        QVERIFY(server.GetScript().WaitForRequests(2, "DELETE"));
        QTRY_VERIFY(!QFile::exists(server.root + "/JsonFiles/new.json"));
        setNUVSCloudSettings({ShortSilenceMs, {}});
        QCOMPARE(Upload(folder, writeFile(NewFolder() + "/old.json", "{}")).Wait().Told(), QString("time-out"));
        setNUVSCloudSettings({20 * 1000, {}});
        QCOMPARE(Children(folder).Wait().result.items.size(), 1);
        QCOMPARE(readFile(server.stored), s_stored);
    }

    // The length of such an answer is not told before.
    void whatNeverEndsIsNotTaken()
    {
        StockedServer server;
        QCOMPARE(Login(server.account).Wait().Told(), QString("done"));
        const QString file = idOf("old.json", idOf("JsonFiles")), target = writeFile(NewFolder() + "/old.json", "old");
        server.GetScript().Add(times(1, fault(CFault::Chunked, "GET")));
        QCOMPARE(Download(file, target).Wait().Told(), QString("done"));
        QVERIFY(readFile(target) == s_stored);
        server.GetScript().Add(fault(CFault::Endless, "GET"));
        QCOMPARE(Download(file, target).Wait().Told(), QString("error"));
        QVERIFY(readFile(target) == s_stored);
    }

    // With Basic it would be alice with another password.
    void aColonIsInNoName()
    {
        StockedServer server;
        const int colon = server.Password.indexOf(':');
        const CCloudAccount account{server.User + ':' + server.Password.left(colon), server.Password.mid(colon + 1),
                                    server.GetAddress()};
        QCOMPARE(Login(account).Wait().Told(), QString("NUVS_000008"));
        QCOMPARE(methods(server.GetScript().TakeLog()), QString("PROPFIND without credentials"));
    }

    void anUploadIsTwoRequests()
    {
        StockedServer server;
        QCOMPARE(Login(server.account).Wait().Told(), QString("done"));
        const QString folder = idOf("JsonFiles"), here = NewFolder();
        server.GetScript().TakeLog();
        for (int size : {0, 10, 2000 * 1000}) {
            QCOMPARE(Upload(folder, writeFile(here + "/new.json", someBytes(size))).Wait().Told(), QString("done"));
            QCOMPARE(methods(server.GetScript().TakeLog()), QString("PUT MOVE"));
        }
        // In another session as well: what the folder holds is asked for once.
        QCOMPARE(Logout().Wait().Told(), QString("done"));
        QCOMPARE(Login(server.account).Wait().Told(), QString("done"));
        server.GetScript().TakeLog();
        for (const char* name : {"/new.json", "/old.json", "/newer.json"})
            QCOMPARE(Upload(folder, writeFile(here + name, "{}")).Wait().Told(), QString("done"));
        QCOMPARE(methods(server.GetScript().TakeLog()), QString("PUT MOVE PROPFIND MOVE PUT MOVE PUT MOVE"));
    }

    void brokenDownloadsGoOn_data()
    {
        QTest::addColumn<QVector<CFault>>("faults");
        QTest::addColumn<bool>("changed");
        QTest::addColumn<QString>("ranges");
        const CFault cut = times(1, fault(CFault::CutBody, "GET"));
        const auto row = [](const char* name, const QVector<CFault>& faults, bool changed, const char* ranges) {
            QTest::newRow(name) << faults << changed << QString(ranges);
        };
        row("cut once", {cut}, false, ",bytes=1000000-");
        row("cut twice", {cut, cut}, false, ",bytes=1000000-,bytes=1500000-");
        row("changed meanwhile", {cut}, true, ",bytes=1000000-");
        row("whole instead of a part", {cut, fault(CFault::IgnoreRange, "GET")}, false, ",bytes=1000000-");
        row("another part", {cut, times(1, fault(CFault::WrongRange, "GET"))}, false, ",bytes=1000000-,");
        row("no such part", {cut, times(1, status(416, "GET"))}, false, ",bytes=1000000-,");
        row("changed and cut again", {cut, cut}, true, ",bytes=1000000-,bytes=1000006-");
    }

    void brokenDownloadsGoOn()
    {
        QFETCH(QVector<CFault>, faults);
        QFETCH(bool, changed);
        QFETCH(QString, ranges);
        StockedServer server;
        QCOMPARE(Login(server.account).Wait().Told(), QString("done"));
        const QString file = idOf("old.json", idOf("JsonFiles")), target = NewFolder() + "/old.json";
        const QByteArray wanted = changed ? QByteArray("{\"another\":") + s_stored + '}' : s_stored;
        if (changed)
            faults[0].done = [&] { writeFile(server.stored, wanted); };
        server.GetScript().TakeLog();
        for (const CFault& wrong : faults)
            server.GetScript().Add(wrong);
        QCOMPARE(Download(file, target).Wait().Told(), QString("done"));
        QVERIFY(readFile(target) == wanted);
        QStringList asked;
        const auto log = server.GetScript().TakeLog();
        for (const CRequestRecord& record : log)
            if (record.method == "GET")
                asked.append(record.range);
        QCOMPARE(asked.join(','), ranges);
        QCOMPARE(QDir(QFileInfo(target).path()).entryList(QDir::Files | QDir::Hidden), QStringList("old.json"));
    }

    void namesStayInTheirFolder()
    {
        StockedServer server;
        QCOMPARE(Login(server.account).Wait().Told(), QString("done"));
        const QString folder = idOf("JsonFiles");
        const QVector<QByteArray> hostile = {"/dav/KIV/JsonFiles/../evil",
                                             "/dav/KIV/JsonFiles/%2e%2e%2fevil",
                                             "/dav/KIV/JsonFiles/..%2fevil",
                                             "/dav/KIV/JsonFiles/%2e%2e",
                                             "/dav/KIV/JsonFiles/..",
                                             "/dav/KIV/JsonFiles/..%5cevil",
                                             "/dav/KIV/JsonFiles/evil%00.json",
                                             "/dav/KIV/JsonFiles/evil%0a",
                                             "/dav/KIV/JsonFiles/sub/evil",
                                             "/dav/KIV/JsonFiles/C:evil",
                                             "/dav/KIV/evil",
                                             "/evil",
                                             "evil",
                                             "../evil",
                                             "//127.0.0.2/dav/KIV/JsonFiles/evil",
                                             "http://127.0.0.2/dav/KIV/JsonFiles/evil",

                                             "file:///etc/passwd",
                                             "/dav/KIV/JsonFiles/.session-0123456789abcdef0123456789abcdef/",
                                             "/dav/KIV/JsonFiles/%c0%ae%c0%ae",
                                             "/dav/KIV/JsonFiles/" + QByteArray(5000, 'e'),
                                             "/dav/KIV/JsonFiles/old.json",
                                             ""};
        for (const QByteArray& href : hostile)
            server.GetScript().Add({CFault::Entry, "PROPFIND", "JsonFiles", 207, href, 0, 1});
        for (const QByteArray& href : hostile) {
            const auto listing = Children(folder).Wait();
            QStringList names;
            for (const NUVSCloudFileItem& item : listing.result.items)
                names.append(item.name);
            QCOMPARE(href + ": " + listing.Told() + ' ' + names.join('|'), href + ": done old.json");
        }
        // A byte that no document may hold makes the whole answer worthless.
        server.GetScript().Add(
            {CFault::Entry, "PROPFIND", "JsonFiles", 207, QByteArray("/dav/KIV/JsonFiles/a\0b", 21)});
        QCOMPARE(Children(folder).Wait().Told(), QString("NUVS_100003"));
    }

    void redirectsAreNotFollowed_data()
    {
        QTest::addColumn<QString>("operation");
        for (const char* operation : {"login", "children", "createFolder", "upload", "download", "deleteFile"})
            QTest::newRow(operation) << operation;
    }

    // To the same server or to another host: nobody is asked there, with or without credentials.
    void redirectsAreNotFollowed()
    {
        QFETCH(QString, operation);
        StockedServer server;
        CFaultServer stranger("127.0.0.2");
        QDir(stranger.GetFolder()).mkpath("KIV/JsonFiles");
        for (const QString& target : {stranger.GetAddress(), server.GetAddress() + "elsewhere/"}) {
            QCOMPARE(Login(server.account).Wait().Told(), QString("done"));
            m_folder = idOf("JsonFiles");
            m_file = idOf("old.json", m_folder);
            server.GetScript().Add({CFault::Redirect, "", "", 302, target.toUtf8()});
            const QString told = Carry(operation, server.account, NewFolder());
            QVERIFY2(told == "NUVS_000010" || told == "error", qPrintable(told));
            const auto log = server.GetScript().TakeLog();
            QVERIFY(std::none_of(log.cbegin(), log.cend(), [](auto& seen) { return seen.path.contains("elsewhere"); }));
            server.GetScript().Clear();
        }
        QCOMPARE(methods(stranger.GetScript().TakeLog()), QString());
    }

    // A disk on which no file may grow as large as what comes.
    void aFullDiskKeepsWhatWasThere()
    {
        StockedServer server;
        QCOMPARE(Login(server.account).Wait().Told(), QString("done"));
        const QString file = idOf("old.json", idOf("JsonFiles")), target = writeFile(NewFolder() + "/old.json", "old");
        rlimit before{};
        getrlimit(RLIMIT_FSIZE, &before);
        const auto handler = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit small{100 * 1000, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
        const QString told = Download(file, target).Wait().Told();
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
        QCOMPARE(told, QString("error"));
        QCOMPARE(readFile(target), QByteArray("old"));
        QCOMPARE(QDir(QFileInfo(target).path()).entryList(QDir::Files | QDir::Hidden), QStringList("old.json"));
        QCOMPARE(Download(file, target).Wait().Told(), QString("done"));
        QVERIFY(readFile(target) == s_stored);
    }

    // Nobody listens there.
    void noServerIsAnError()
    {
        QString address;
        {
            const CFaultServer gone;
            address = gone.GetAddress();
        }
        const auto outcome = Login({"alice", "secret", address}).Wait();
        QCOMPARE(outcome.Told(), QString("error"));
        QCOMPARE(outcome.error, QNetworkReply::ConnectionRefusedError);
    }

    // Links in a local account lead nowhere.
    void linksOfALocalAccountAreNotFollowed()
    {
        const QString outside = NewFolder(), local = NewFolder();
        writeFile(outside + "/secret.json", "secret");
        setNUVSCloudSettings({20 * 1000, local});
        QCOMPARE(Login({"alice", "", ""}).Wait().Told(), QString("done"));
        QCOMPARE(CreateFolder("JsonFiles").Wait().Told(), QString("done"));
        const QString root = local + "/alice/KIV";
        QVERIFY(QFile::link(outside, root + "/JsonFiles/link"));
        QVERIFY(QFile::link(outside + "/secret.json", root + "/JsonFiles/link.json"));
        const QString folder = idOf("JsonFiles");
        QCOMPARE(Children(folder).Wait().result.items.size(), 0);
        for (const char* inside : {"/link", "/link.json", "/link/secret.json"}) {
            const QString id = folder + inside;
            QCOMPARE(Download(id, local + "/never").Wait().Told(), QString("error"));
            QVERIFY(Children(id).Wait().Told().startsWith("NUVS_00000"));
            QCOMPARE(Upload(id, writeFile(local + "/secret.json", "new")).Wait().Told(), QString("error"));
        }
        QCOMPARE(Delete(folder).Wait().Told(), QString("done"));
        QCOMPARE(visibleTree(outside), Tree({{"secret.json", "secret"}}));
    }

private:
    QString m_folder;
    QString m_file;
};

MATERIAL_TEST_MAIN(TestCloudFaults)

#include "TestCloudFaults.moc"
