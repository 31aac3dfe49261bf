#pragma once

#include "CloudFolders.h"
#include "CloudIndex.h"
#include "DownloadInformation.h"

#include <QMutex>
#include <QQueue>
#include <QSet>

/// Brings documents and textures from the cloud, one at a time and each once. What arrived is checked, put in its place
/// whole and told to the index. What failed is tried again after the next login. Any thread.
class CCloudDownloads {
public:
    explicit CCloudDownloads(CCloudIndex& index) : m_index(index) {}

    void SetFolders(const CloudFolders& folders);
    /// Queues a file by its name in the cloud; a second time does nothing, nor does one that lies in its place.
    void Request(CCloudIndex::Folder folder, const QString& name);
    /// Begins the next one, when none is under way, somebody is logged in and the index knows the folder.
    void StartNext();
    /// The one under way is over; `isWhole`: it lies whole where it was sent to.
    void End(CCloudIndex::Folder folder, const QString& name, bool isWhole);
    /// After a login: what failed may be asked for again. Who counts from the login on resets the information.
    void Restart();
    /// Whether documents are waited for, or could not be brought.
    bool AreDocumentsUnderWay() const;
    bool IsDocumentMissing() const;
    CDownloadInformation& GetInformation() { return m_information; }

private:
    struct Item {
        CCloudIndex::Folder folder = CCloudIndex::Documents;
        QString name;
        bool isValid() const { return !name.isEmpty(); }
    };
    Item takeNext(QString& fileId);
    static QString place(const Item& item, const CloudFolders& folders);
    static QString arrival(const Item& item, const CloudFolders& folders);
    static bool putInPlace(const Item& item, const CloudFolders& folders);

    CCloudIndex& m_index;
    CDownloadInformation m_information;
    mutable QMutex m_mutex;
    CloudFolders m_folders;
    QQueue<Item> m_queue;
    QSet<QString> m_requested[2];  ///< names, by folder
    QSet<QString> m_failed[2];
    bool m_isBusy = false;
    Item m_current;
    CloudFolders m_currentFolders;  ///< for which the one under way was asked
};
