#pragma once

#include "FaultConnection.h"

#include <QTemporaryDir>

#include <list>
#include <memory>
#include <thread>

/// A WebDAV server in this process, on loopback, over a temporary folder: honest where its script asks for nothing
/// else. It knows one account, alice with the password Password.
class CFaultServer {
public:
    static const QString User;
    static const QString Password;

    /// `address`: of loopback; another one than 127.0.0.1 is another host.
    explicit CFaultServer(const QString& address = QStringLiteral("127.0.0.1"));
    ~CFaultServer();
    CFaultServer(const CFaultServer&) = delete;
    CFaultServer& operator=(const CFaultServer&) = delete;

    /// "http://127.0.0.1:PORT/dav/"
    QString GetAddress() const;
    /// Where that address lies on this machine.
    QString GetFolder() const { return m_folder.filePath(QStringLiteral("dav")); }
    CFaultScript& GetScript() { return m_script; }

private:
    struct Line {
        std::unique_ptr<CFaultConnection> connection;
        std::thread thread;
    };

    void Accept();

    QTemporaryDir m_folder;
    CDavFolder m_dav;
    CFaultScript m_script;
    QString m_host;
    CTcpSocket m_listener;
    std::list<Line> m_lines;  // of the accepting thread until that has ended
    std::thread m_thread;
};
