#pragma once

#include "CloudDownloads.h"
#include "CloudFolders.h"
#include "CloudIndex.h"
#include "CloudRemovals.h"
#include "SynchronizationStatus.h"
#include "UploadRegistry.h"

#include <QObject>
#include <QReadWriteLock>
#include <QTimer>

#include <functional>
#include <memory>

class CUploadWorker;
struct CloudCopies;
class LoginCallback;

/// The product's side of the cloud, one for the process: what dialogs ask for, what callbacks of the storage service
/// report, and the queues between them. Dialogs call it on the user-interface thread; what any thread may call says so.
class CCloudService : public QObject {
    Q_OBJECT

public:
    static CCloudService& Instance();

    // ---- dialogs

    /// A dialog is being set up. Its favourites are the ones that are mirrored from here on; the counters start at 0.
    void Open(const CloudFolders& folders);
    /// Dialogs that listen to the login timer, while they live.
    void Attach();
    void Detach();
    void SetVisible(bool isVisible) { m_isVisible = isVisible; }
    bool IsVisible() const { return m_isVisible; }
    bool IsOpen() const { return m_isOpen; }
    /// Borrowed; may be null.
    void SetLoginCallback(LoginCallback* callback) { m_loginCallback = callback; }
    LoginCallback* GetLoginCallback() const { return m_loginCallback; }
    /// Fires once a login succeeded, until a dialog stops it. Without a dialog the news waits for the next one.
    QTimer& GetLoginTimer() { return m_loginTimer; }
    /// Any thread.
    void StartLoginTimer();

    // ---- uploading

    /// Replaces the synchronisation before; without documents it does nothing.
    void StartUpload(const QStringList& documents, const QStringList& textures);
    /// What a dialog does five times a second: begins the next upload and the next download when none is under way.
    void PeriodicStep();
    CUploadRegistry& GetRegistry() { return m_registry; }
    CSynchronizationStatus& GetStatus() { return m_status; }
    /// One more favourite is complete in the cloud. Any thread.
    void CountUpload();
    /// Files that were sent since Open(): documents and textures. Any thread.
    int CountDocuments() const;
    int CountTextures() const;

    // ---- what the cloud has

    /// List the folders and bring what this machine lacks: the names of the textures, the documents of the favourites.
    void LoadTextureIndex();
    void LoadDocuments();
    /// A listing came. Any thread.
    void TakeListing(CCloudIndex::Folder folder, const QVector<NUVSCloudFileItem>& items,
                     const CCloudIndex::Moment& asked);
    /// After a login: what failed before may be tried again, and the folders are not known.
    void Restart();
    CCloudIndex& GetIndex() { return m_index; }
    CCloudDownloads& GetDownloads() { return m_downloads; }

    // ---- removing

    /// A favourite was removed on this machine: its copies in the cloud go as soon as that is possible.
    void RemoveFavorite(const QString& id, const QStringList& textureNames);
    /// It is a favourite again.
    void KeepFavorite(const QString& id);
    /// Whether there is something to remove, and the listings that tell what the cloud has of it, and nothing is on its
    /// way there.
    bool HasRemovals() const;
    /// Begins the next removal; textures of the names given stay.
    void RunRemoval(const std::function<bool(const QString& texture)>& isUsed);
    /// The last copy is gone. Any thread.
    void EndRemoval(const QString& id);

signals:
    /// The cloud has nothing of the favourite any more.
    void onRemoveAppearance(const QString& id);

private:
    CCloudService();
    ~CCloudService() override;
    void announceLogin();
    void uploadTick();
    void takeDocument(const NUVSCloudFileItem& item);
    CloudFolders folders() const;
    CloudCopies copiesOf(const QString& id, const QStringList& textureNames,
                         const std::function<bool(const QString&)>& isUsed) const;

    bool m_isOpen = false;
    bool m_isVisible = false;
    LoginCallback* m_loginCallback = nullptr;
    QTimer m_loginTimer;
    int m_dialogCount = 0;
    bool m_isLoginNews = false;     ///< a login that no dialog was told of yet
    mutable QReadWriteLock m_lock;  ///< of the folders and the two counters
    CloudFolders m_folders;
    int m_documentCount = 0;
    int m_textureCount = 0;
    CSynchronizationStatus m_status;
    CUploadRegistry m_registry;
    std::unique_ptr<CUploadWorker> m_worker;
    CCloudIndex m_index;
    CCloudDownloads m_downloads{m_index};
    CCloudRemovals m_removals;
};
