#pragma once

#include <QStringList>

/// One synchronisation: the documents that go to the cloud and, in the same order, their textures (an empty text where
/// there is none). Making it begins the set-up of the cloud's folders; what follows is in the callbacks.
class CUploadWorker {
public:
    CUploadWorker(const QStringList& documents, const QStringList& textures);

    int Count() const { return m_documents.size(); }
    const QString& Document(int index) const { return m_documents[index]; }
    const QString& Texture(int index) const { return m_textures[index]; }

private:
    QStringList m_documents;
    QStringList m_textures;
};
