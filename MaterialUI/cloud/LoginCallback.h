#pragma once

#include <MaterialUIExport.h>

#include <QString>

/// What a host logs in with. The dialog passes on the first three; the open storage service takes them as user,
/// password and address of the server.
struct MATERIALUI_EXPORT LoginAccountInfo {
    QString a;
    QString b;
    QString c;
    QString d;
    QString e;
    QString f;
    QString g;
};

/// The host's side of logging in. Called on the user-interface thread; the host owns it, and it must outlive the
/// dialogs that it was given to. The order of the operations is an interface to hosts.
class MATERIALUI_EXPORT LoginCallback {
public:
    LoginCallback();
    LoginCallback(const LoginCallback& other);
    LoginCallback& operator=(const LoginCallback& other);
    virtual ~LoginCallback();

    /// Fills in the account. False when there is none: the dialog then logs out.
    virtual bool GetLoginInfo(LoginAccountInfo& info) = 0;
    /// Whether the dialog may log in now.
    virtual bool IsLoginEnabled() = 0;
    /// For the host's own use: the dialogs never call these.
    virtual void OnLogin() {}
    virtual void OnLogout() {}
};
