#pragma once

#include "Storage.h"

#include <QDir>
#include <QObject>
#include <QScopedPointer>

namespace nuvs {

/// Files in a folder of this machine. Symbolic links in it are neither shown nor followed.
class CLocalStorage : public IStorage {
public:
    CLocalStorage(const SAccount& account, LostFunction lost);

    void Open(const AnswerPtr<NUVSLoginInfo>& answer, const std::function<void()>& opened) override;
    void Verify(const AnswerPtr<NUVSLoginInfo>& answer, const std::function<void(bool isThere)>& handler) override;
    void Close(const AnswerPtr<NUVSLogoutInfo>& answer) override;
    void Children(const QString& id, const AnswerPtr<NUVSCloudChildren>& answer) override;
    void CreateFolder(const QString& name, const QString& parent,
                      const AnswerPtr<NUVSCloudCreateFolder>& answer) override;
    void Upload(const QString& folder, const QString& localPath, const AnswerPtr<NUVSCloudUploadFile>& answer) override;
    void Download(const QString& id, const QString& localPath, const AnswerPtr<NUVSBaseInfo>& answer) override;
    void Delete(const QString& id, const AnswerPtr<NUVSCloudDelFile>& answer) override;
    void Abort() override;

private:
    QString PathOf(const QString& id) const;
    bool IsReal(const QString& id) const;
    bool IsFolder(const QString& id) const;
    QString MarkPath() const;
    bool HasMark(CAnswerBase& answer);
    bool HasFolder(const QString& id, CAnswerBase& answer);
    void TakeMarksAway() const;
    void Staged(const QString& staging, const QString& id, qint64 size, const AnswerPtr<NUVSCloudUploadFile>& answer);

    const QString m_address;
    const bool m_makesAddress;
    const QString m_root;
    const QString m_mark;
    const LostFunction m_lost;
    QScopedPointer<QObject, QScopedPointerDeleteLater> m_copies;  ///< their parent
};

}  // namespace nuvs
