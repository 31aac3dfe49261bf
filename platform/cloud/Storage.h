#pragma once

#include "Answer.h"

#include <QUrl>

namespace nuvs {

/// Whose files, and where.
struct SAccount {
    QString user;
    QString password;
    QUrl address;  ///< of the folder that holds the application-data root, without "/" at its end
    QString product;
    QString version;
    bool makesAddress = false;  ///< when its folder is missing

    bool IsSameAs(const SAccount& other) const
    {
        return user == other.user && address == other.address && product == other.product;
    }
};

/// One session in one place. Names and identifiers that come in are checked already. Lives on the service's thread, as
/// long as something is under way.
class IStorage : public std::enable_shared_from_this<IStorage> {
public:
    virtual ~IStorage() = default;

    /// Leaves the session's mark and takes away others'; calls `opened` when that was done, else ends the answer.
    virtual void Open(const AnswerPtr<NUVSLoginInfo>& answer, const std::function<void()>& opened) = 0;
    /// Asks whether the mark is still there; no answer to that ends the login's.
    virtual void Verify(const AnswerPtr<NUVSLoginInfo>& answer, const std::function<void(bool isThere)>& handler) = 0;
    /// Takes the mark away. The answer may be null.
    virtual void Close(const AnswerPtr<NUVSLogoutInfo>& answer) = 0;
    virtual void Children(const QString& id, const AnswerPtr<NUVSCloudChildren>& answer) = 0;
    virtual void CreateFolder(const QString& name, const QString& parent,
                              const AnswerPtr<NUVSCloudCreateFolder>& answer) = 0;
    virtual void Upload(const QString& folder, const QString& localPath,
                        const AnswerPtr<NUVSCloudUploadFile>& answer) = 0;
    virtual void Download(const QString& id, const QString& localPath, const AnswerPtr<NUVSBaseInfo>& answer) = 0;
    virtual void Delete(const QString& id, const AnswerPtr<NUVSCloudDelFile>& answer) = 0;
    /// Ends what is under way, and what begins later, in onError.
    virtual void Abort() = 0;
};

/// Called when a request found that the session is no longer its own.
using LostFunction = std::function<void(const IStorage&)>;

}  // namespace nuvs
