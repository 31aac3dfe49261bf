#include "UploadCallbacks.h"

#include "CloudService.h"

#include <nuvs/NUVSCloudService.h>

#include <QFileInfo>
#include <QLoggingCategory>

namespace {

Q_LOGGING_CATEGORY(uploads, "materialui.cloud.uploads", QtInfoMsg)

void logProgress(qint64 sent, qint64 total)
{
    qCDebug(uploads).noquote() << QString::number(sent) + " / " + QString::number(total);
}

void noteInIndex(CCloudIndex::Folder folder, const NUVSCloudUploadFile& result)
{
    if (!result.id.isEmpty())
        CCloudService::Instance().GetIndex().Add(folder, result.name, result.id);
}

void countComplete(const QString& document, const UploadRecords::State& asSent)
{
    UploadRecords::Keep(document, asSent);
    CCloudService& service = CCloudService::Instance();
    service.GetIndex().AddArrived(CCloudIndex::Documents, QFileInfo(document).completeBaseName());
    service.CountUpload();
    service.GetStatus().CountSuccess();
}

}  // namespace

void UserLibUploadCallback::onUploadProgress(qint64 sent, qint64 total)
{
    logProgress(sent, total);
}

void UserLibUploadCallback::Answered(const NUVSCloudUploadFile& result, bool isSessionLost)
{
    CCloudService& service = CCloudService::Instance();
    service.GetRegistry().Complete();
    if (isSessionLost) {
        service.GetStatus().CountFailure();
        return;
    }
    noteInIndex(CCloudIndex::Documents, result);
    if (m_texture.isEmpty())
        countComplete(m_document, m_asSent);
    else
        getNUVSCloudService()->fileService()->upload(service.GetRegistry().GetTextureFolder(), m_texture,
                                                     new ProgressUploadCallback(m_document, m_asSent));
}

void UserLibUploadCallback::NotAnswered()
{
    CCloudService::Instance().GetRegistry().Complete();
    CCloudService::Instance().GetStatus().CountFailure();
}

void ProgressUploadCallback::onUploadProgress(qint64 sent, qint64 total)
{
    logProgress(sent, total);
}

void ProgressUploadCallback::Answered(const NUVSCloudUploadFile& result, bool isSessionLost)
{
    if (isSessionLost) {
        CCloudService::Instance().GetStatus().CountFailure();
        return;
    }
    noteInIndex(CCloudIndex::Textures, result);
    countComplete(m_document, m_asSent);
}

void ProgressUploadCallback::NotAnswered()
{
    CCloudService::Instance().GetStatus().CountFailure();
}
