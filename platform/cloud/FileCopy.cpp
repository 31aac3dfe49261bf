#include "FileCopy.h"

#include <kiv/system/StoredPath.h>

namespace nuvs {

namespace {

constexpr qint64 BlockSize = 4 << 20;

}  // namespace

CFileCopy::CFileCopy(const QString& from, std::unique_ptr<QFileDevice> to, EDirection direction, AnswerBasePtr answer)
    : m_from(from), m_to(std::move(to)), m_direction(direction), m_answer(std::move(answer))
{
    connect(&m_next, &QTimer::timeout, this, &CFileCopy::CopyBlock);
}

CFileCopy::~CFileCopy() = default;

void CFileCopy::Start(const Done& done)
{
    m_done = done;
    m_size = kiv::system::FileSize(m_from.fileName());
    if (m_size < 0)
        return End(false, QNetworkReply::ContentNotFoundError);
    if (!m_from.open(QIODevice::ReadOnly | QIODevice::Unbuffered) || !m_to->open(QIODevice::WriteOnly))
        return End(false, QNetworkReply::ContentAccessDenied);
    m_next.start(0);
}

void CFileCopy::CopyBlock()
{
    const QByteArray block = m_from.read(qMin(BlockSize, m_size - m_copied));
    if (m_to->write(block) != block.size() || (block.isEmpty() && m_copied < m_size))
        return End(false, QNetworkReply::UnknownContentError);
    m_copied += block.size();
    Tell();
    if (m_copied == m_size)
        End(IsWhole(), QNetworkReply::UnknownContentError);
}

void CFileCopy::Tell()
{
    if (m_direction == EDirection::Up)
        return m_answer->Sent(m_copied, m_size);
    m_answer->ReadyRead();
    m_answer->Received(m_copied, m_size);
}

// A file that was written to meanwhile is no copy of anything.
bool CFileCopy::IsWhole() const
{
    return m_to->flush() && kiv::system::FileSize(m_from.fileName()) == m_size;
}

void CFileCopy::End(bool isWhole, QNetworkReply::NetworkError error)
{
    m_next.stop();
    m_from.close();
    deleteLater();
    const Done done = std::exchange(m_done, nullptr);
    done(isWhole, error);
    m_answer.reset();
}

}  // namespace nuvs
