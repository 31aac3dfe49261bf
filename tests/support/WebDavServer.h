#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <memory>

class QProcess;

struct CWebDavSettings {
    enum Program { Rclone, Apache };
    enum Authentication { Basic, Digest };  ///< rclone knows Basic only

    Program program = Rclone;
    Authentication authentication = Basic;
    bool tls = false;  ///< with a certificate for 127.0.0.1 that the server makes for itself
    QString user = QStringLiteral("alice");
    QString password = QStringLiteral("open: 100% sesame");
    /// Where the server keeps its folder; empty: the system's folder for temporary files. Where this process is root,
    /// Apache is nobody and must be able to get there.
    QString place = {};
};

/// A WebDAV server that people really run, on a free port of 127.0.0.1, over a temporary folder. It ends with the
/// object, and with the process in any case. Use it in the thread that made it.
class CWebDavServer {
public:
    static bool IsInstalled(CWebDavSettings::Program program);

    /// Starts the program and waits until it answers. Look at GetError() afterwards.
    explicit CWebDavServer(const CWebDavSettings& settings);
    ~CWebDavServer();
    CWebDavServer(const CWebDavServer&) = delete;
    CWebDavServer& operator=(const CWebDavServer&) = delete;

    /// Why there is no server, with what the program said; empty when it answers.
    QString GetError() const { return m_error; }
    /// "http://127.0.0.1:PORT/", or https.
    QString GetAddress() const;
    /// Where that address lies on this machine.
    QString GetFolder() const { return m_folder.filePath(QStringLiteral("documents")); }
    /// PEM text; empty without TLS.
    QByteArray GetCertificate() const;

private:
    bool Start(int port);
    QStringList RcloneArguments(int port) const;
    QStringList ApacheArguments(int port) const;
    bool WaitUntilItAnswers(int port);
    bool MakeCertificate();
    QString Say() const;

    CWebDavSettings m_settings;
    QTemporaryDir m_folder;
    std::unique_ptr<QProcess> m_process;
    QString m_error;
    int m_port = 0;
};
