#pragma once

#include "DavSession.h"

namespace nuvs {

/// Files on a WebDAV server. Before anything is done the mark is looked for, where the answer itself does not show it.
class CWebDavStorage : public IStorage {
public:
    CWebDavStorage(const SAccount& account, const LostFunction& lost);

    void Open(const AnswerPtr<NUVSLoginInfo>& answer, const std::function<void()>& opened) override;
    void Verify(const AnswerPtr<NUVSLoginInfo>& answer, const std::function<void(bool isThere)>& handler) override;
    void Close(const AnswerPtr<NUVSLogoutInfo>& answer) override;
    void Children(const QString& id, const AnswerPtr<NUVSCloudChildren>& answer) override;
    void CreateFolder(const QString& name, const QString& parent,
                      const AnswerPtr<NUVSCloudCreateFolder>& answer) override;
    void Upload(const QString& folder, const QString& localPath, const AnswerPtr<NUVSCloudUploadFile>& answer) override;
    void Download(const QString& id, const QString& localPath, const AnswerPtr<NUVSBaseInfo>& answer) override;
    void Delete(const QString& id, const AnswerPtr<NUVSCloudDelFile>& answer) override;
    void Abort() override { m_session.Connection().Abort(); }

private:
    /// Keeps this storage, and with it the connection, as long as a request is under way.
    DavSessionPtr Session() { return {shared_from_this(), &m_session}; }

    CDavSession m_session;
};

}  // namespace nuvs
