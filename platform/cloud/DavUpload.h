#pragma once

#include "DavSession.h"

#include <QDateTime>

namespace nuvs {

/// Sends a file into the session's mark and moves it from there into its folder: so it appears whole, and not at all
/// when the mark is gone. Where the server cannot move, it is sent to its place, and deleted again when that breaks.
class CDavUpload : public std::enable_shared_from_this<CDavUpload> {
public:
    CDavUpload(DavSessionPtr session, const QString& folder, const QString& path,
               AnswerPtr<NUVSCloudUploadFile> answer);

    void Start();

private:
    bool IsUnchanged() const;
    void Put();
    void PutDone(const SDavAnswer& got);
    void Move(bool replaces);
    void MoveDone(const SDavAnswer& got, bool replaces);
    void MoveOverFile();
    void PutDirectly();
    void PutDirectlyDone(const SDavAnswer& got);
    void Send(const QUrl& url, void (CDavUpload::*done)(const SDavAnswer&));
    void GiveUp(const SDavAnswer& got, const QUrl& left);
    void FailForFolder(const QUrl& left);
    void FailAfterCleaning(const QUrl& left, QNetworkReply::NetworkError error);
    void Clean(const QUrl& left, const std::function<void()>& done);
    void Finish();

    const DavSessionPtr m_session;
    const QString m_folder;
    const QString m_path;
    const QString m_id;
    const QUrl m_staging;
    const qint64 m_size;
    const QDateTime m_modified;
    const AnswerPtr<NUVSCloudUploadFile> m_answer;
};

}  // namespace nuvs
