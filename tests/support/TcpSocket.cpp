#include "TcpSocket.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

CTcpSocket::~CTcpSocket()
{
    close(m_descriptor);
}

bool CTcpSocket::Listen(const QString& address)
{
    sockaddr_in local{};
    local.sin_family = AF_INET;
    inet_pton(AF_INET, address.toLatin1().constData(), &local.sin_addr);
    return bind(m_descriptor, reinterpret_cast<const sockaddr*>(&local), sizeof local) == 0 &&
           listen(m_descriptor, SOMAXCONN) == 0;
}

int CTcpSocket::GetPort() const
{
    sockaddr_in local{};
    socklen_t length = sizeof local;
    getsockname(m_descriptor, reinterpret_cast<sockaddr*>(&local), &length);
    return ntohs(local.sin_port);
}

int CTcpSocket::Accept()
{
    return accept4(m_descriptor, nullptr, nullptr, SOCK_CLOEXEC);
}

QByteArray CTcpSocket::Read()
{
    QByteArray bytes(1 << 16, Qt::Uninitialized);
    const ssize_t length = recv(m_descriptor, bytes.data(), size_t(bytes.size()), 0);
    bytes.resize(length > 0 ? int(length) : 0);
    return bytes;
}

bool CTcpSocket::Write(const QByteArray& bytes)
{
    int written = 0;
    while (written < bytes.size()) {
        const ssize_t length =
            send(m_descriptor, bytes.constData() + written, size_t(bytes.size() - written), MSG_NOSIGNAL);
        if (length <= 0)
            return false;
        written += int(length);
    }
    return true;
}

void CTcpSocket::KeepStep()
{
    const int bytes = 16 * 1024;
    setsockopt(m_descriptor, SOL_SOCKET, SO_SNDBUF, &bytes, sizeof bytes);
}

void CTcpSocket::Shutdown()
{
    shutdown(m_descriptor, SHUT_RDWR);
}
