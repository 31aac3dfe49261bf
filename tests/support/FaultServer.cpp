#include "FaultServer.h"

#include <QDir>

#include <sys/socket.h>

const QString CFaultServer::User = QStringLiteral("alice");
const QString CFaultServer::Password = QStringLiteral("open: 100% sesame");

CFaultServer::CFaultServer(const QString& address)
    : m_dav(m_folder.path()), m_host(address), m_listener(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    if (!QDir().mkpath(GetFolder()) || !m_listener.Listen(address))
        qFatal("the fault server cannot listen at %s", qPrintable(address));
    m_thread = std::thread([this] { Accept(); });
}

CFaultServer::~CFaultServer()
{
    m_script.Stop();
    m_listener.Shutdown();
    m_thread.join();
    for (Line& line : m_lines) {
        line.connection->Shutdown();
        line.thread.join();
    }
}

QString CFaultServer::GetAddress() const
{
    return QStringLiteral("http://%1:%2/dav/").arg(m_host).arg(m_listener.GetPort());
}

void CFaultServer::Accept()
{
    const QByteArray authorization = "Basic " + (User + ':' + Password).toUtf8().toBase64();
    for (int descriptor = m_listener.Accept(); descriptor >= 0; descriptor = m_listener.Accept()) {
        auto connection = std::make_unique<CFaultConnection>(descriptor, m_script, m_dav, authorization);
        CFaultConnection* served = connection.get();
        m_lines.push_back({std::move(connection), std::thread([served] { served->Run(); })});
    }
}
