#pragma once

#include "CloudCallback.h"

#include <nuvs/NUVSRecords.h>

#include <QStringList>

/// What the cloud has of a favourite that was removed here: the names and identifiers of its files.
struct CloudCopies {
    QString id;  ///< the favourite's
    QString documentFile;
    QStringList textureNames;
    QStringList textureFiles;
    bool isEmpty() const { return documentFile.isEmpty() && textureFiles.isEmpty(); }
};

/// Deletes the copies one after the other, the document first, and counts one success or failure.
class RemovalCallback : public CCloudCallback<NUVSCloudDelFile> {
public:
    static void Begin(const CloudCopies& copies);

protected:
    void Answered(const NUVSCloudDelFile& result, bool isSessionLost) override;
    void NotAnswered() override;

private:
    explicit RemovalCallback(const CloudCopies& rest) : m_rest(rest) {}
    void noteDeleted();

    CloudCopies m_rest;
};
