#include "SignIn.h"

#include <nuvs/NUVSCloudService.h>

#include <QPointer>

namespace {

// Called on the service's thread, perhaps after the context is gone.
class Callback : public NUVSCallback<NUVSLoginInfo> {
public:
    Callback(QObject* context, std::function<void(QString)> done) : m_context(context), m_done(std::move(done)) {}
    void onFinished(NUVSLoginInfo result) override { tell(SignIn::reason(result.code)); }
    void onTimeOut() override { tell(SignIn::noAnswer()); }
    void onError(QNetworkReply::NetworkError) override { tell(SignIn::noAnswer()); }

private:
    void tell(const QString& reason)
    {
        const auto call = [context = m_context, done = m_done, reason] {
            if (context)
                done(reason);
        };
        QMetaObject::invokeMethod(QCoreApplication::instance(), call, Qt::QueuedConnection);
    }

    QPointer<QObject> m_context;  // lives on the application's thread, and only there is looked at
    std::function<void(QString)> m_done;
};

}  // namespace

void SignIn::begin(const LoginAccountInfo& account, QObject* context, const std::function<void(QString)>& done)
{
    INUVSAccountService& service = *getNUVSCloudService()->accountService();
    service.logout(new NUVSDefaultLogoutCallback);
    service.login(account.a, account.b, account.c, "1.0", "KIV", new Callback(context, done));
}

QString SignIn::noAnswer()
{
    return tr("The server cannot be reached, or is not to be trusted.");
}

QString SignIn::reason(const QString& code)
{
    if (code.isEmpty())
        return {};
    if (code == "NUVS_000008")
        return tr("The server does not take this user and password.");
    if (code == "NUVS_000006" || code == "NUVS_000007")
        return tr("There is no WebDAV folder at this address.");
    if (code == "NUVS_000010")
        return tr("The server sends elsewhere; enter the address that it really has.");
    return tr("The server cannot do this (%1).").arg(code);
}
