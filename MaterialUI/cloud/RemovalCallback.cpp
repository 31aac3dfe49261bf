#include "RemovalCallback.h"

#include "CloudService.h"

#include <nuvs/NUVSCloudService.h>

namespace {

const QString NotThere = QStringLiteral("NUVS_000005");

}  // namespace

void RemovalCallback::Begin(const CloudCopies& copies)
{
    const QString& file = copies.documentFile.isEmpty() ? copies.textureFiles.first() : copies.documentFile;
    getNUVSCloudService()->fileService()->deleteFile(file, new RemovalCallback(copies));
}

void RemovalCallback::Answered(const NUVSCloudDelFile& result, bool /*isSessionLost*/)
{
    if (!result.code.isEmpty() && result.code != NotThere) {
        NotAnswered();
        return;
    }
    noteDeleted();
    if (m_rest.isEmpty())
        CCloudService::Instance().EndRemoval(m_rest.id);
    else
        Begin(m_rest);
}

void RemovalCallback::NotAnswered()
{
    CCloudService::Instance().GetStatus().CountRemovalEnd(false);
}

void RemovalCallback::noteDeleted()
{
    CCloudIndex& index = CCloudService::Instance().GetIndex();
    if (!m_rest.documentFile.isEmpty()) {
        index.Remove(CCloudIndex::Documents, m_rest.id + QStringLiteral(".json"));
        m_rest.documentFile.clear();
    } else {
        index.Remove(CCloudIndex::Textures, m_rest.textureNames.takeFirst());
        m_rest.textureFiles.removeFirst();
    }
}
