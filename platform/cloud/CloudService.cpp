#include "CloudService.h"

#include <QCoreApplication>

namespace nuvs {

namespace {

CCloudService& service()
{
    // Never destroyed: requests may come until the very end of the process.
    static auto* const theService = new CCloudService;
    return *theService;
}

void endService()
{
    service().End();
}

/// Where the process leaves by exit(), the application object stays, and with it the thread.
struct SEndAtExit {
    ~SEndAtExit() { endService(); }
};

// On the caller's thread: there is no other any more, or none yet.
template <class Result>
void refuse(NUVSCallback<Result>* callback)
{
    const std::unique_ptr<NUVSCallback<Result>> owned(callback);
    if (!owned)
        return;
    owned->onStart();
    owned->onError(QNetworkReply::OperationCanceledError);
}

}  // namespace

// With the lock held.
bool CCloudService::StartThread()
{
    if (m_isEnding || !QCoreApplication::instance())
        return false;
    // Made as late as this, so that it goes before what callbacks use.
    static const SEndAtExit first;
    // Qt's and OpenSSL's own objects are made by the first login; the thread must not lose them either.
    if (m_state.IsOpen())
        static const SEndAtExit second;
    if (m_thread)
        return true;
    qAddPostRoutine(endService);
    m_thread = std::make_unique<QThread>();
    m_thread->setObjectName(QStringLiteral("cloud"));
    m_dispatcher = new CDispatcher(m_state);
    m_dispatcher->moveToThread(m_thread.get());
    QObject::connect(m_thread.get(), &QThread::finished, m_dispatcher, &QObject::deleteLater);
    m_thread->start();
    return true;
}

template <class Result, class Work>
void CCloudService::Post(NUVSCallback<Result>* callback, EKind kind, Work work)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (StartThread()) {
            if (callback)
                callback->moveToThread(m_thread.get());
            const auto answer = std::make_shared<CAnswer<Result>>(callback, kind);
            CDispatcher* dispatcher = m_dispatcher;
            QMetaObject::invokeMethod(
                dispatcher, [dispatcher, answer, work] { work(*dispatcher, answer); }, Qt::QueuedConnection);
            return;
        }
    }
    refuse(callback);
}

void CCloudService::End()
{
    std::unique_ptr<QThread> thread;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isEnding = true;
        thread = std::move(m_thread);
    }
    if (!thread)
        return;
    // A callback called exit(), and nobody can wait for its thread here.
    if (thread.get() == QThread::currentThread()) {
        (void)thread.release();
        return;
    }
    // What was posted before is taken up before, so that it ends, too.
    CDispatcher* dispatcher = m_dispatcher;
    const auto shutdown = [dispatcher] {
        dispatcher->Shutdown();
        dispatcher->thread()->quit();
    };
    QMetaObject::invokeMethod(dispatcher, shutdown, Qt::QueuedConnection);
    thread->wait();
    // The next application may use the service again.
    QObject::connect(QCoreApplication::instance(), &QObject::destroyed, [this] { Reopen(); });
}

void CCloudService::Reopen()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isEnding = false;
}

void CCloudService::login(const QString& user, const QString& password, const QString& address, const QString& version,
                          const QString& product, NUVSCallback<NUVSLoginInfo>* callback)
{
    const SLogin login{user, password, address, version, product, m_state.Logouts()};
    Post(callback, EKind::Question,
         [login](CDispatcher& dispatcher, const auto& answer) { dispatcher.Login(login, answer); });
}

void CCloudService::logout(NUVSCallback<NUVSLogoutInfo>* callback)
{
    m_state.Logout();
    Post(callback, EKind::Question, [](CDispatcher& dispatcher, const auto& answer) { dispatcher.Logout(answer); });
}

void CCloudService::children(const QString& folderId, NUVSCallback<NUVSCloudChildren>* callback)
{
    Post(callback, EKind::Question,
         [folderId](CDispatcher& dispatcher, const auto& answer) { dispatcher.Children(folderId, answer); });
}

void CCloudService::createFolder(const QString& name, const QString& parentId,
                                 NUVSCallback<NUVSCloudCreateFolder>* callback)
{
    Post(callback, EKind::Question, [name, parentId](CDispatcher& dispatcher, const auto& answer) {
        dispatcher.CreateFolder(name, parentId, answer);
    });
}

void CCloudService::upload(const QString& folderId, const QString& localPath,
                           NUVSCallback<NUVSCloudUploadFile>* callback)
{
    Post(callback, EKind::Transfer, [folderId, localPath](CDispatcher& dispatcher, const auto& answer) {
        dispatcher.Upload(folderId, localPath, answer);
    });
}

void CCloudService::download(const QString& fileId, const QString& localPath, NUVSCallback<NUVSBaseInfo>* callback)
{
    Post(callback, EKind::Transfer, [fileId, localPath](CDispatcher& dispatcher, const auto& answer) {
        dispatcher.Download(fileId, localPath, answer);
    });
}

void CCloudService::deleteFile(const QString& id, NUVSCallback<NUVSCloudDelFile>* callback)
{
    Post(callback, EKind::Question,
         [id](CDispatcher& dispatcher, const auto& answer) { dispatcher.Delete(id, answer); });
}

}  // namespace nuvs

INUVSCloudService* getNUVSCloudService()
{
    return &nuvs::service();
}

void NUVSDefaultLogoutCallback::onFinished(NUVSLogoutInfo /*result*/)
{
}
