#pragma once

#include "LoginState.h"
#include "Storage.h"

#include <nuvs/NUVSCloudSettings.h>

#include <QObject>

#include <deque>
#include <vector>

namespace nuvs {

/// What was asked of login(), still unchecked.
struct SLogin {
    QString user;
    QString password;
    QString address;
    QString version;
    QString product;
    unsigned logouts = 0;  ///< that there had been when it was asked for
};

/// Takes requests up on the service's thread, checks their names and hands them to the storage of the open session.
class CDispatcher : public QObject {
public:
    explicit CDispatcher(CLoginState& state) : m_state(state) {}

    /// Logins are carried out one after the other: side by side they would take away each other's marks.
    void Login(const SLogin& login, const AnswerPtr<NUVSLoginInfo>& answer);
    void Logout(const AnswerPtr<NUVSLogoutInfo>& answer);
    void Children(const QString& id, const AnswerPtr<NUVSCloudChildren>& answer);
    void CreateFolder(const QString& name, const QString& parent, const AnswerPtr<NUVSCloudCreateFolder>& answer);
    void Upload(const QString& folder, const QString& localPath, const AnswerPtr<NUVSCloudUploadFile>& answer);
    void Download(const QString& id, const QString& localPath, const AnswerPtr<NUVSBaseInfo>& answer);
    void Delete(const QString& id, const AnswerPtr<NUVSCloudDelFile>& answer);
    /// Ends everything in onError.
    void Shutdown();

private:
    struct SWaitingLogin {
        SLogin login;
        AnswerPtr<NUVSLoginInfo> answer;
    };

    void StartNextLogin();
    void StartLogin(const SLogin& login, const AnswerPtr<NUVSLoginInfo>& answer);
    void Open(const SAccount& account, unsigned logouts, const AnswerPtr<NUVSLoginInfo>& answer);
    std::shared_ptr<IStorage> MakeStorage(const SAccount& account);
    void Opened(const SAccount& account, unsigned logouts, const std::shared_ptr<IStorage>& storage,
                const AnswerPtr<NUVSLoginInfo>& answer);
    void EndOthers(const IStorage& opened);
    void Lost(const IStorage& storage);
    void Forget();
    std::shared_ptr<IStorage> Begin(CAnswerBase& answer) const;

    CLoginState& m_state;
    std::deque<SWaitingLogin> m_logins;
    bool m_isLoginRunning = false;
    bool m_isShutDown = false;
    SAccount m_account;
    std::shared_ptr<IStorage> m_storage;              ///< of the open session
    std::weak_ptr<IStorage> m_lost;                   ///< of the session before, when that was lost
    std::vector<std::weak_ptr<IStorage>> m_storages;  ///< that may still have something under way
};

}  // namespace nuvs
