#pragma once

#include "CloudCallback.h"

#include <nuvs/NUVSRecords.h>

/// The identifier of the folder of the name; empty when the listing has none.
QString FindFolder(const NUVSCloudChildren& listing, const QString& name);

/// Any of the following that fails abandons the synchronisation: nothing waits any more.
template <typename T>
class CFolderCallback : public CCloudCallback<T> {
protected:
    void Answered(const T& result, bool isSessionLost) final;
    void NotAnswered() override;
    virtual void Continue(const T& result) = 0;
};

/// Looks which of the folders for uploads are there, and makes what is missing.
class MyCallbackFolderExists : public CFolderCallback<NUVSCloudChildren> {
protected:
    void Continue(const NUVSCloudChildren& result) override;
};

/// "TextureFiles" was made; `jsonFolder` is empty when the other folder is missing, too.
class MyCallbackCreateFolder : public CFolderCallback<NUVSCloudCreateFolder> {
public:
    explicit MyCallbackCreateFolder(const QString& jsonFolder) : m_jsonFolder(jsonFolder) {}

protected:
    void Continue(const NUVSCloudCreateFolder& result) override;

private:
    QString m_jsonFolder;
};

/// "JsonFiles" was made, the last folder that was missing.
class MyCallbackCreateFinalFolder : public CFolderCallback<NUVSCloudCreateFolder> {
public:
    explicit MyCallbackCreateFinalFolder(const QString& textureFolder) : m_textureFolder(textureFolder) {}

protected:
    void Continue(const NUVSCloudCreateFolder& result) override;

private:
    QString m_textureFolder;
};
