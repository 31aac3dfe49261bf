#pragma once

#include "CloudCallback.h"
#include "UploadRecords.h"

#include <nuvs/NUVSRecords.h>

/// The upload of a favourite's document. Its end lets the next favourite begin; its success has the texture follow.
class UserLibUploadCallback : public CCloudCallback<NUVSCloudUploadFile> {
public:
    /// Paths of this machine; the texture is empty when the favourite has none.
    UserLibUploadCallback(const QString& document, const QString& texture)
        : m_document(document), m_asSent(UploadRecords::StateOf(document)), m_texture(texture)
    {
    }
    void onUploadProgress(qint64 sent, qint64 total) override;

protected:
    void Answered(const NUVSCloudUploadFile& result, bool isSessionLost) override;
    void NotAnswered() override;

private:
    QString m_document;
    UploadRecords::State m_asSent;
    QString m_texture;
};

/// The upload of a favourite's texture, with which the favourite is complete.
class ProgressUploadCallback : public CCloudCallback<NUVSCloudUploadFile> {
public:
    ProgressUploadCallback(const QString& document, const UploadRecords::State& asSent)
        : m_document(document), m_asSent(asSent)
    {
    }
    void onUploadProgress(qint64 sent, qint64 total) override;

protected:
    void Answered(const NUVSCloudUploadFile& result, bool isSessionLost) override;
    void NotAnswered() override;

private:
    QString m_document;
    UploadRecords::State m_asSent;
};
