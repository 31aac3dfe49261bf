#pragma once

#include "Dispatcher.h"

#include <nuvs/NUVSCloudService.h>

#include <QThread>

#include <mutex>

namespace nuvs {

/// The service of the process: hands what is asked on any thread over to the dispatcher's thread, which it starts with
/// the first request and ends with the application.
class CCloudService : public INUVSCloudService, public INUVSAccountService, public INUVSFileService {
public:
    INUVSAccountService* accountService() override { return this; }
    INUVSFileService* fileService() override { return this; }

    void login(const QString& user, const QString& password, const QString& address, const QString& version,
               const QString& product, NUVSCallback<NUVSLoginInfo>* callback) override;
    void logout(NUVSCallback<NUVSLogoutInfo>* callback) override;
    bool isLogin() override { return m_state.IsOpen(); }

    void children(const QString& folderId, NUVSCallback<NUVSCloudChildren>* callback) override;
    void createFolder(const QString& name, const QString& parentId,
                      NUVSCallback<NUVSCloudCreateFolder>* callback) override;
    void upload(const QString& folderId, const QString& localPath,
                NUVSCallback<NUVSCloudUploadFile>* callback) override;
    void download(const QString& fileId, const QString& localPath, NUVSCallback<NUVSBaseInfo>* callback) override;
    void deleteFile(const QString& id, NUVSCallback<NUVSCloudDelFile>* callback) override;

    /// As the application or the process ends: everything ends in onError, then the thread.
    void End();

private:
    template <class Result, class Work>
    void Post(NUVSCallback<Result>* callback, EKind kind, Work work);
    bool StartThread();
    void Reopen();

    CLoginState m_state;
    std::mutex m_mutex;
    bool m_isEnding = false;
    std::unique_ptr<QThread> m_thread;
    CDispatcher* m_dispatcher = nullptr;  ///< lives in the thread and goes with it
};

}  // namespace nuvs
