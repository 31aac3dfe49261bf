#include "WebDavServer.h"

#include "ApacheConfiguration.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>

#include <csignal>
#include <sys/prctl.h>

namespace {

constexpr int Attempts = 5;            // somebody else may take the free port first
constexpr int PatienceMs = 20 * 1000;  // until a server that does not come up is given up
constexpr int LookMs = 20;

// A program that does not outlive the thread that started it.
class CTiedProcess : public QProcess {
protected:
    void setupChildProcess() override { prctl(PR_SET_PDEATHSIG, SIGKILL); }
};

QString programPath(const QString& name)
{
    const QString found = QStandardPaths::findExecutable(name);
    return !found.isEmpty() ? found : QStandardPaths::findExecutable(name, {"/usr/sbin", "/usr/local/sbin"});
}

QString programName(CWebDavSettings::Program program)
{
    return program == CWebDavSettings::Rclone ? QStringLiteral("rclone") : QStringLiteral("apache2");
}

int freePort()
{
    QTcpServer server;
    return server.listen(QHostAddress::LocalHost) ? server.serverPort() : 0;
}

}  // namespace

bool CWebDavServer::IsInstalled(CWebDavSettings::Program program)
{
    return !programPath(programName(program)).isEmpty();
}

CWebDavServer::CWebDavServer(const CWebDavSettings& settings)
    : m_settings(settings), m_folder((settings.place.isEmpty() ? QDir::tempPath() : settings.place) + "/webdav-XXXXXX")
{
    if (!QDir().mkpath(GetFolder()) || (settings.tls && !MakeCertificate())) {
        m_error = QStringLiteral("cannot prepare ") + m_folder.path();
        return;
    }
    for (int i = 0; i < Attempts && m_port == 0; ++i) {
        const int port = freePort();
        if (Start(port))
            m_port = port;
    }
    if (m_port == 0)
        m_error = programName(settings.program) + QStringLiteral(" does not answer: ") + Say();
}

CWebDavServer::~CWebDavServer()
{
    if (!m_process)
        return;
    m_process->kill();
    m_process->waitForFinished();
}

QString CWebDavServer::GetAddress() const
{
    return QStringLiteral("%1://127.0.0.1:%2/").arg(m_settings.tls ? "https" : "http").arg(m_port);
}

QByteArray CWebDavServer::GetCertificate() const
{
    QFile file(m_folder.filePath(QStringLiteral("certificate.pem")));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool CWebDavServer::Start(int port)
{
    const bool rclone = m_settings.program == CWebDavSettings::Rclone;
    m_process = std::make_unique<CTiedProcess>();
    m_process->setProcessChannelMode(QProcess::MergedChannels);
    m_process->setStandardOutputFile(m_folder.filePath(QStringLiteral("output.log")), QIODevice::Append);
    m_process->start(programPath(programName(m_settings.program)),
                     rclone ? RcloneArguments(port) : ApacheArguments(port));
    return m_process->waitForStarted() && WaitUntilItAnswers(port);
}

QStringList CWebDavServer::RcloneArguments(int port) const
{
    QStringList arguments = {"serve",
                             "webdav",
                             GetFolder(),
                             "--config",
                             m_folder.filePath("rclone.conf"),
                             "--addr",
                             QStringLiteral("127.0.0.1:%1").arg(port)};
    if (!m_settings.user.isEmpty())
        arguments += {"--user", m_settings.user, "--pass", m_settings.password};
    if (m_settings.tls)
        arguments += {"--cert", m_folder.filePath("certificate.pem"), "--key", m_folder.filePath("key.pem")};
    return arguments;
}

QStringList CWebDavServer::ApacheArguments(int port) const
{
    WriteApacheConfiguration(m_settings, m_folder.path(), port);
    // -X: one process, which is the one to end.
    return {"-X", "-f", m_folder.filePath("apache.conf")};
}

bool CWebDavServer::WaitUntilItAnswers(int port)
{
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < PatienceMs) {
        QTcpSocket socket;
        socket.connectToHost(QHostAddress::LocalHost, quint16(port));
        if (socket.waitForConnected(PatienceMs))
            return m_process->state() == QProcess::Running;
        if (m_process->waitForFinished(LookMs) || m_process->state() == QProcess::NotRunning)
            return false;
    }
    return false;
}

bool CWebDavServer::MakeCertificate()
{
    QProcess openssl;
    openssl.start("openssl", {"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes",
                              "-days", "2", "-subj", "/CN=127.0.0.1", "-addext", "subjectAltName=IP:127.0.0.1",
                              "-keyout", m_folder.filePath("key.pem"), "-out", m_folder.filePath("certificate.pem")});
    return openssl.waitForFinished(PatienceMs) && openssl.exitCode() == 0;
}

QString CWebDavServer::Say() const
{
    QFile file(m_folder.filePath(QStringLiteral("output.log")));
    return file.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(file.readAll().right(2000)) : QString();
}
