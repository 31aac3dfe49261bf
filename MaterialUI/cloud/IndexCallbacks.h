#pragma once

#include "CloudCallback.h"
#include "CloudIndex.h"

#include <nuvs/NUVSRecords.h>

/// Looks for one of the two folders in a listing of the root, and has that folder listed.
class IndexDownloadCallback : public CCloudCallback<NUVSCloudChildren> {
public:
    explicit IndexDownloadCallback(CCloudIndex::Folder folder) : m_folder(folder) {}

protected:
    void Answered(const NUVSCloudChildren& result, bool isSessionLost) override;

private:
    CCloudIndex::Folder m_folder;
};

/// Hands the listing of a folder to the cloud service.
class FolderIndexCallback : public CCloudCallback<NUVSCloudChildren> {
public:
    explicit FolderIndexCallback(CCloudIndex::Folder folder) : m_folder(folder) {}

protected:
    void Answered(const NUVSCloudChildren& result, bool isSessionLost) override;

private:
    CCloudIndex::Folder m_folder;
};
