#include "UploadFile.h"

namespace nuvs {

CUploadFile::CUploadFile(const QString& path, qint64 size) : m_file(path), m_size(size)
{
    m_file.open(QIODevice::ReadOnly);
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

bool CUploadFile::seek(qint64 pos)
{
    return QIODevice::seek(pos) && m_file.seek(pos);
}

qint64 CUploadFile::readData(char* data, qint64 most)
{
    const qint64 wanted = qMin(most, m_size - m_file.pos());
    const qint64 count = m_file.read(data, wanted);
    return count == 0 && wanted > 0 ? -1 : count;
}

}  // namespace nuvs
