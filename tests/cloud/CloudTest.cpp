#include "CloudTest.h"

#include <TestFiles.h>

#include <nuvs/NUVSCloudSettings.h>

#include <QDirIterator>
#include <QProcess>

#include <mutex>
#include <random>

namespace {

// The default password of the test servers, as it is and as it travels.
const QVector<QByteArray> s_secrets = {"100% sesame", "100%25%20sesame",
                                       QByteArray("alice:open: 100% sesame").toBase64()};

QtMessageHandler s_below = nullptr;
std::mutex s_mutex;
QString s_said;

void listen(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    {
        const std::lock_guard<std::mutex> lock(s_mutex);
        s_said += text + '\n';
    }
    s_below(type, context, text);
}

bool tellsSecret(const QByteArray& bytes)
{
    return std::any_of(s_secrets.cbegin(), s_secrets.cend(),
                       [&](const QByteArray& secret) { return bytes.contains(secret); });
}

QDirIterator everythingIn(const QString& folder)
{
    return {folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories};
}

}  // namespace

CCloudTest::CCloudTest()
{
    // A server that is somebody else comes through here.
    QFile::setPermissions(m_place.path(), QFile::permissions(m_place.path()) | QFile::ExeOther);
    // Before anybody asks where temporary files go.
    for (const char* name : {"TMPDIR", "HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME"})
        qputenv(name, m_place.path().toLocal8Bit());
}

void CCloudTest::prepare()
{
    s_below = qInstallMessageHandler(listen);
}

void CCloudTest::finish()
{
    (void)CloudRequests::Logout().Wait();
    qInstallMessageHandler(s_below);
    QVERIFY2(!tellsSecret(s_said.toUtf8()), qPrintable(s_said));
    QDirIterator files(everythingIn(m_place.path()));
    while (files.hasNext()) {
        const QString path = files.next();
        QVERIFY2(!files.fileInfo().isFile() || !tellsSecret(readFile(path)), qPrintable(path));
    }
}

void CCloudTest::init()
{
    setNUVSCloudSettings({20 * 1000, m_place.filePath("local")});
    // An error where the server of the test before has gone with its marks.
    QCOMPARE(CloudRequests::Logout().Wait().endings.size(), 1);
}

QString CCloudTest::NewFolder()
{
    const QString path = m_place.filePath(QString("files %1").arg(++m_folders));
    QDir().mkpath(path);
    return path;
}

QStringList helperArguments(const QString& what, const CCloudAccount& account, const QByteArray& certificates,
                            const QString& file)
{
    return {what, account.user, account.password, account.address, account.product, file, certificates};
}

QByteArray logInElsewhere(const CCloudAccount& account, const QByteArray& certificates)
{
    QProcess helper;
    helper.start(CLOUD_HELPER, helperArguments("login", account, certificates));
    helper.waitForFinished();
    return helper.readAllStandardOutput();
}

QMap<QString, QByteArray> visibleTree(const QString& folder)
{
    QMap<QString, QByteArray> tree;
    QDirIterator entries(everythingIn(folder));
    while (entries.hasNext()) {
        const QString path = QDir(folder).relativeFilePath(entries.next());
        if (!path.contains(".session-"))
            tree[entries.fileInfo().isDir() ? path + '/' : path] = readFile(entries.filePath());
    }
    return tree;
}

QStringList marksIn(const QString& root)
{
    return QDir(root).entryList({".session-*"}, QDir::Dirs | QDir::Hidden);
}

QByteArray someBytes(int count)
{
    std::mt19937 random(5);  // NOLINT: the same each time
    QByteArray bytes(count, Qt::Uninitialized);
    std::generate(bytes.begin(), bytes.end(), [&] { return char(random()); });
    return bytes;
}

QString idOf(const QString& name, const QString& folderId)
{
    const auto listing = CloudRequests::Children(folderId).Wait();
    for (const NUVSCloudFileItem& item : listing.result.items)
        if (item.name == name)
            return item.id;
    return {};
}
