#include "IndexCallbacks.h"

#include "CloudService.h"
#include "FolderCallbacks.h"

#include <nuvs/NUVSCloudService.h>

void IndexDownloadCallback::Answered(const NUVSCloudChildren& result, bool /*isSessionLost*/)
{
    if (!result.code.isEmpty())
        return;
    const QString id = FindFolder(result, CCloudIndex::FolderName(m_folder));
    if (id.isEmpty())  // nobody has synchronised with this account yet
        CCloudService::Instance().TakeListing(m_folder, {}, m_asked);
    else
        getNUVSCloudService()->fileService()->children(id, new FolderIndexCallback(m_folder, m_asked));
}

void FolderIndexCallback::Answered(const NUVSCloudChildren& result, bool /*isSessionLost*/)
{
    if (result.code.isEmpty())
        CCloudService::Instance().TakeListing(m_folder, result.items, m_asked);
}
