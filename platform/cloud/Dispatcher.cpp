#include "Dispatcher.h"

#include "AccountAddress.h"
#include "LocalStorage.h"
#include "RemoteName.h"
#include "Settings.h"
#include "WebDavStorage.h"

#include <algorithm>

namespace nuvs {

namespace {

constexpr auto NotPermitted = QNetworkReply::ContentOperationNotPermittedError;

bool isFolder(const QString& id, CAnswerBase& answer)
{
    if (!IsRemoteId(id))
        answer.Refuse({code::PathInvalid, NotPermitted});
    return IsRemoteId(id);
}

bool isEntry(const QString& id, CAnswerBase& answer)
{
    if (id.isEmpty())
        answer.Refuse({code::FilePathEmpty, NotPermitted});
    return !id.isEmpty() && isFolder(id, answer);
}

bool isNewName(const QString& name, CAnswerBase& answer)
{
    if (name.isEmpty())
        answer.Refuse({code::FolderNameEmpty, NotPermitted});
    else if (!IsRemoteName(name))
        answer.Refuse({code::PathInvalid, NotPermitted});
    return IsRemoteName(name);
}

}  // namespace

void CDispatcher::Login(const SLogin& login, const AnswerPtr<NUVSLoginInfo>& answer)
{
    answer->Start();
    m_logins.push_back({login, answer});
    StartNextLogin();
}

void CDispatcher::StartNextLogin()
{
    while (!m_isLoginRunning && !m_logins.empty()) {
        const SWaitingLogin next = m_logins.front();
        m_logins.pop_front();
        StartLogin(next.login, next.answer);
    }
}

void CDispatcher::StartLogin(const SLogin& login, const AnswerPtr<NUVSLoginInfo>& answer)
{
    SAccount account{login.user, login.password, {}, login.product, login.version, false};
    if (m_isShutDown || login.logouts != m_state.Logouts())
        return answer->Fail(QNetworkReply::OperationCanceledError);
    if (!ReadAddress(login.address, CloudSettings(), account))
        return answer->Refuse({code::PathInvalid, {}});
    if (m_storage && m_state.IsOpen() && !m_account.IsSameAs(account))
        return answer->Refuse({code::OtherAccount, {}});
    m_isLoginRunning = true;
    // Not at once: the login that ends is still on the stack.
    answer->WhenEnded([this] {
        m_isLoginRunning = false;
        QMetaObject::invokeMethod(
            this, [this] { StartNextLogin(); }, Qt::QueuedConnection);
    });
    if (!m_storage || m_account.password != account.password)
        return Open(account, login.logouts, answer);
    // Whoever logs in again (a dialog does each time it is opened) does not end what this session has under way.
    const std::shared_ptr<IStorage> storage = m_storage;
    storage->Verify(answer, [this, account, logouts = login.logouts, storage, answer](bool isThere) {
        if (!isThere || storage != m_storage)
            return Open(account, logouts, answer);
        Opened(account, logouts, storage, answer);
    });
}

void CDispatcher::Open(const SAccount& account, unsigned logouts, const AnswerPtr<NUVSLoginInfo>& answer)
{
    if (logouts != m_state.Logouts())
        return answer->Fail(QNetworkReply::OperationCanceledError);
    const std::shared_ptr<IStorage> storage = MakeStorage(account);
    storage->Open(answer, [this, account, logouts, storage, answer] { Opened(account, logouts, storage, answer); });
}

std::shared_ptr<IStorage> CDispatcher::MakeStorage(const SAccount& account)
{
    const LostFunction lost = [this](const IStorage& storage) { Lost(storage); };
    std::shared_ptr<IStorage> storage;
    if (account.address.isLocalFile())
        storage = std::make_shared<CLocalStorage>(account, lost);
    else
        storage = std::make_shared<CWebDavStorage>(account, lost);
    const auto isGone = [](const std::weak_ptr<IStorage>& other) { return other.expired(); };
    m_storages.erase(std::remove_if(m_storages.begin(), m_storages.end(), isGone), m_storages.end());
    m_storages.push_back(storage);
    return storage;
}

void CDispatcher::Opened(const SAccount& account, unsigned logouts, const std::shared_ptr<IStorage>& storage,
                         const AnswerPtr<NUVSLoginInfo>& answer)
{
    if (!m_state.Open(logouts)) {
        storage->Close(nullptr);
        return answer->Fail(QNetworkReply::OperationCanceledError);
    }
    EndOthers(*storage);
    m_account = account;
    m_storage = storage;
    NUVSLoginInfo info;
    info.success = true;
    answer->Finish(info);
}

// What a session that went by itself still has under way cannot succeed, and to find it lost is no longer news. After a
// logout requests end as they would.
void CDispatcher::EndOthers(const IStorage& opened)
{
    for (const std::shared_ptr<IStorage>& other : {m_storage, m_lost.lock()}) {
        if (other && other.get() != &opened)
            other->Abort();
    }
    m_lost.reset();
}

void CDispatcher::Lost(const IStorage& storage)
{
    if (&storage != m_storage.get())
        return;
    m_state.Lose();
    m_lost = m_storage;
    Forget();
}

void CDispatcher::Forget()
{
    m_account = {};
    m_storage.reset();
}

void CDispatcher::Logout(const AnswerPtr<NUVSLogoutInfo>& answer)
{
    answer->Start();
    const std::shared_ptr<IStorage> storage = m_storage;
    Forget();
    if (!storage)
        return answer->Finish({});
    storage->Close(answer);
}

// A copy: a request that finds its session lost takes it from the dispatcher while it is still in the storage.
std::shared_ptr<IStorage> CDispatcher::Begin(CAnswerBase& answer) const
{
    answer.Start();
    if (!m_storage)
        answer.Refuse({code::NotLoggedIn, {}});
    return m_storage;
}

void CDispatcher::Children(const QString& id, const AnswerPtr<NUVSCloudChildren>& answer)
{
    const std::shared_ptr<IStorage> storage = Begin(*answer);
    if (storage && isFolder(id, *answer))
        storage->Children(id, answer);
}

void CDispatcher::CreateFolder(const QString& name, const QString& parent,
                               const AnswerPtr<NUVSCloudCreateFolder>& answer)
{
    const std::shared_ptr<IStorage> storage = Begin(*answer);
    if (storage && isNewName(name, *answer) && isFolder(parent, *answer))
        storage->CreateFolder(name, parent, answer);
}

void CDispatcher::Upload(const QString& folder, const QString& localPath, const AnswerPtr<NUVSCloudUploadFile>& answer)
{
    const std::shared_ptr<IStorage> storage = Begin(*answer);
    if (storage && isFolder(folder, *answer))
        storage->Upload(folder, localPath, answer);
}

void CDispatcher::Download(const QString& id, const QString& localPath, const AnswerPtr<NUVSBaseInfo>& answer)
{
    const std::shared_ptr<IStorage> storage = Begin(*answer);
    if (storage && isEntry(id, *answer))
        storage->Download(id, localPath, answer);
}

void CDispatcher::Delete(const QString& id, const AnswerPtr<NUVSCloudDelFile>& answer)
{
    const std::shared_ptr<IStorage> storage = Begin(*answer);
    if (storage && isEntry(id, *answer))
        storage->Delete(id, answer);
}

void CDispatcher::Shutdown()
{
    m_isShutDown = true;
    m_state.Logout();
    Forget();
    for (const std::weak_ptr<IStorage>& weak : std::exchange(m_storages, {})) {
        if (const std::shared_ptr<IStorage> storage = weak.lock())
            storage->Abort();
    }
    m_logins.clear();
}

}  // namespace nuvs
