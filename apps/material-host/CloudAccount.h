#pragma once

#include <LoginCallback.h>

#include <QSettings>
#include <QString>

struct HostOptions;

/// The account in which favourites are mirrored, as the user entered it. User and server are kept in the profile, the
/// password only as long as the program runs. Without anything entered it is a folder of this machine. What the command
/// line names goes before what the profile has.
class CloudAccount : public LoginCallback {
public:
    explicit CloudAccount(const HostOptions& options);

    bool GetLoginInfo(LoginAccountInfo& info) override;
    bool IsLoginEnabled() override { return !m_isSignedOut; }

    QString user() const;
    /// Empty: the folder of this machine.
    QString address() const;
    void set(const QString& user, const QString& password, const QString& address);
    /// Nobody is logged in until set() is called again.
    void signOut() { m_isSignedOut = true; }
    bool isSignedOut() const { return m_isSignedOut; }

private:
    QSettings m_settings;
    QString m_user;  ///< of the command line
    QString m_address;
    QString m_password;
    bool m_isSignedOut = false;
};
