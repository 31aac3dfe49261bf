#pragma once

#include <nuvs/NUVSCallback.h>
#include <nuvs/NUVSRecords.h>

#include <QString>

/// The account. All operations may be called on any thread and return at once; callbacks are handed over.
class INUVSAccountService {
public:
    virtual ~INUVSAccountService() = default;
    /// Opens a session. `user`, `password`, `address`: the server's WebDAV folder ("https://host/dav/alice/"), or a
    /// folder of this machine ("file:///srv/cloud", then without a password); empty means the local folder of the
    /// settings. Below it lies the application-data root, a folder named `product`, which is made when missing.
    /// The session's mark is left there, and marks of earlier sessions are taken away: of two sessions of an account
    /// the later one lasts. A login into the account that is logged in keeps its session while the mark is there, so
    /// that transfers go on, and opens a new one otherwise, which ends in onError what the old one still has under way;
    /// one into another account is refused with "NUVS_000013" until logout.
    virtual void login(const QString& user, const QString& password, const QString& address, const QString& version,
                       const QString& product, NUVSCallback<NUVSLoginInfo>* callback) = 0;
    /// Ends the session; isLogin() is false at once. Without a session it succeeds. Requests under way end as they
    /// would.
    virtual void logout(NUVSCallback<NUVSLogoutInfo>* callback) = 0;
    /// Whether a session is open, as far as is known here. Cheap.
    virtual bool isLogin() = 0;
};

/// Folders and files of the application-data root. Identifiers come from earlier answers; the empty text is the root.
/// Without a session, and when another session took its place, every request finishes with "NUVS_000002".
/// Requests run side by side: one that must see what another did is made when that one has finished.
class INUVSFileService {
public:
    virtual ~INUVSFileService() = default;
    /// The files and folders in a folder. Unknown folder: "NUVS_000006".
    virtual void children(const QString& folderId, NUVSCallback<NUVSCloudChildren>* callback) = 0;
    /// Makes a folder. One of that name there: "NUVS_000001" with its identifier.
    virtual void createFolder(const QString& name, const QString& parentId,
                              NUVSCallback<NUVSCloudCreateFolder>* callback) = 0;
    /// Sends the local file under its own name, replacing one of that name. On the server it appears whole or not at
    /// all. Ends in onError, also when a folder has that name, unless it succeeds or finishes with "NUVS_000002". Other
    /// services may finish with "NUVS_000001" for a file that is there already.
    virtual void upload(const QString& folderId, const QString& localPath,
                        NUVSCallback<NUVSCloudUploadFile>* callback) = 0;
    /// Brings a file to the local path, replacing one that is there; its folder is made when missing. There it appears
    /// whole or not at all. A broken connection is taken up where it broke, a few times. Ends in onError unless it
    /// succeeds or finishes with "NUVS_000002".
    virtual void download(const QString& fileId, const QString& localPath, NUVSCallback<NUVSBaseInfo>* callback) = 0;
    /// Deletes a file, or a folder with what is in it. Unknown: "NUVS_000005".
    virtual void deleteFile(const QString& id, NUVSCallback<NUVSCloudDelFile>* callback) = 0;
};

class INUVSCloudService {
public:
    virtual INUVSAccountService* accountService() = 0;
    virtual INUVSFileService* fileService() = 0;

protected:
    ~INUVSCloudService() = default;
};

/// The one service of the process, owned by the library. It works while there is a QCoreApplication: as that ends, what
/// is under way ends in onError, before the application's objects go. As the process ends by exit() the same happens
/// before the objects go that were there when it began. Credentials are kept in memory only.
INUVSCloudService* getNUVSCloudService();

/// For who logs out and does not wait for it.
class NUVSDefaultLogoutCallback : public NUVSCallback<NUVSLogoutInfo> {
public:
    void onFinished(NUVSLogoutInfo result) override;
};
