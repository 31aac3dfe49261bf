#include "FolderCallbacks.h"

#include "CloudIndex.h"
#include "CloudService.h"

#include <nuvs/NUVSCloudService.h>

#include <algorithm>

namespace {

INUVSFileService& files()
{
    return *getNUVSCloudService()->fileService();
}

void registerFolders(const QString& textureFolder, const QString& jsonFolder)
{
    CCloudService::Instance().GetRegistry().RegisterFolders(textureFolder, jsonFolder);
}

const QString RootFolder;

// Another machine may have made the folder in the meantime. Whatever else went wrong, there is no folder to send to,
// and without one the files would land in the root.
bool isUsable(const NUVSCloudCreateFolder& result)
{
    return (result.code.isEmpty() || result.code == CloudErrorCodes::AlreadyExists) && !result.id.isEmpty();
}

bool isUsable(const NUVSCloudChildren& result)
{
    return result.code.isEmpty();
}

}  // namespace

QString FindFolder(const NUVSCloudChildren& listing, const QString& name)
{
    const auto found = std::find_if(listing.items.begin(), listing.items.end(),
                                    [&](const NUVSCloudFileItem& item) { return item.isFolder && item.name == name; });
    return found == listing.items.end() ? QString() : found->id;
}

template <typename T>
void CFolderCallback<T>::Answered(const T& result, bool isSessionLost)
{
    if (isSessionLost || !isUsable(result))
        NotAnswered();
    else
        Continue(result);
}

template <typename T>
void CFolderCallback<T>::NotAnswered()
{
    CCloudService::Instance().GetStatus().Set({});
}

void MyCallbackFolderExists::Continue(const NUVSCloudChildren& result)
{
    const QString textures = CCloudIndex::FolderName(CCloudIndex::Textures);
    const QString documents = CCloudIndex::FolderName(CCloudIndex::Documents);
    const QString textureFolder = FindFolder(result, textures);
    const QString jsonFolder = FindFolder(result, documents);
    if (textureFolder.isEmpty())
        files().createFolder(textures, RootFolder, new MyCallbackCreateFolder(jsonFolder));
    else if (jsonFolder.isEmpty())
        files().createFolder(documents, RootFolder, new MyCallbackCreateFinalFolder(textureFolder));
    else
        registerFolders(textureFolder, jsonFolder);
}

void MyCallbackCreateFolder::Continue(const NUVSCloudCreateFolder& result)
{
    if (m_jsonFolder.isEmpty())
        files().createFolder(CCloudIndex::FolderName(CCloudIndex::Documents), RootFolder,
                             new MyCallbackCreateFinalFolder(result.id));
    else
        registerFolders(result.id, m_jsonFolder);
}

void MyCallbackCreateFinalFolder::Continue(const NUVSCloudCreateFolder& result)
{
    registerFolders(m_textureFolder, result.id);
}
