#include "UploadRegistry.h"

void CUploadRegistry::Close()
{
    const QWriteLocker locker(&m_lock);
    m_completed = -2;
    m_issued = -1;
}

void CUploadRegistry::RegisterFolders(const QString& textureFolder, const QString& jsonFolder)
{
    {
        const QWriteLocker locker(&m_lock);
        m_textureFolder = textureFolder;
        m_jsonFolder = jsonFolder;
        m_completed = -2;
        m_issued = -1;
    }
    Complete();
}

QString CUploadRegistry::GetTextureFolder() const
{
    const QReadLocker locker(&m_lock);
    return m_textureFolder;
}

QString CUploadRegistry::GetJsonFolder() const
{
    const QReadLocker locker(&m_lock);
    return m_jsonFolder;
}

// Asked five times a second and mostly in vain: the write lock is taken only when there is something to do. Uploads
// begin on one thread, so nobody else takes the index in between.
int CUploadRegistry::TakeNext()
{
    {
        const QReadLocker locker(&m_lock);
        if (m_issued != m_completed)
            return -1;
    }
    const QWriteLocker locker(&m_lock);
    return ++m_issued;
}

void CUploadRegistry::Complete()
{
    const QWriteLocker locker(&m_lock);
    ++m_completed;
}
