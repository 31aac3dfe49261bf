#include "UploadWorker.h"

#include "FolderCallbacks.h"

#include <nuvs/NUVSCloudService.h>

CUploadWorker::CUploadWorker(const QStringList& documents, const QStringList& textures)
    : m_documents(documents), m_textures(textures)
{
    getNUVSCloudService()->fileService()->children({}, new MyCallbackFolderExists);
}
