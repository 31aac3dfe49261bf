#pragma once

#include <QByteArray>
#include <QString>

/// A blocking TCP socket for servers that have a thread for each connection: no event loop, and locks that the thread
/// sanitizer sees.
class CTcpSocket {
public:
    /// Takes over an open descriptor.
    explicit CTcpSocket(int descriptor) : m_descriptor(descriptor) {}
    ~CTcpSocket();
    CTcpSocket(const CTcpSocket&) = delete;
    CTcpSocket& operator=(const CTcpSocket&) = delete;

    /// Listens at a free port of a loopback address.
    bool Listen(const QString& address);
    int GetPort() const;
    /// The descriptor of the next connection, negative after Shutdown().
    int Accept();

    /// What has come, waiting for the first byte; empty when the peer has gone or after Shutdown().
    QByteArray Read();
    bool Write(const QByteArray& bytes);
    /// What is written does not run far ahead of what the peer reads.
    void KeepStep();
    /// Ends what waits in another thread.
    void Shutdown();

private:
    int m_descriptor;
};
