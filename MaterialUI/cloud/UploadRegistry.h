#pragma once

#include <QReadWriteLock>
#include <QString>

/// Where uploads go, and which is next: one begins when the one before has ended. Any thread.
class CUploadRegistry {
public:
    /// Nothing can begin until folders are registered.
    void Close();
    /// From here uploads can begin, with index 0.
    void RegisterFolders(const QString& textureFolder, const QString& jsonFolder);
    QString GetTextureFolder() const;
    QString GetJsonFolder() const;
    /// The index of the upload that begins now; -1 while one is under way.
    int TakeNext();
    /// The upload that TakeNext() gave out has ended.
    void Complete();

private:
    mutable QReadWriteLock m_lock;
    QString m_textureFolder;
    QString m_jsonFolder;
    int m_completed = -2;
    int m_issued = -1;
};
