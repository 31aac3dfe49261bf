#pragma once

#include "CloudCallback.h"
#include "CloudIndex.h"

#include <nuvs/NUVSRecords.h>

/// Looks for one of the two folders in a listing of the root, and has that folder listed.
class IndexDownloadCallback : public CCloudCallback<NUVSCloudChildren> {
public:
    IndexDownloadCallback(CCloudIndex::Folder folder, const CCloudIndex::Moment& asked)
        : m_folder(folder), m_asked(asked)
    {
    }

protected:
    void Answered(const NUVSCloudChildren& result, bool isSessionLost) override;

private:
    CCloudIndex::Folder m_folder;
    CCloudIndex::Moment m_asked;
};

/// Hands the listing of a folder to the cloud service.
class FolderIndexCallback : public CCloudCallback<NUVSCloudChildren> {
public:
    FolderIndexCallback(CCloudIndex::Folder folder, const CCloudIndex::Moment& asked) : m_folder(folder), m_asked(asked)
    {
    }

protected:
    void Answered(const NUVSCloudChildren& result, bool isSessionLost) override;

private:
    CCloudIndex::Folder m_folder;
    CCloudIndex::Moment m_asked;
};
