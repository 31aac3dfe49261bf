#include "DavDownload.h"

#include "DownloadTarget.h"

namespace nuvs {

namespace {

constexpr int MostAttempts = 3;
constexpr qint64 BlockSize = 256 << 10;
// Of a file whose size nobody told.
constexpr qint64 LargestUnknown = qint64(4) << 30;

// What proves that a file is still the same: a strong tag, else the time.
QByteArray validatorOf(const QNetworkReply& reply)
{
    const QByteArray tag = reply.rawHeader("ETag");
    const bool isStrong = !tag.isEmpty() && !tag.startsWith("W/");
    return isStrong ? tag : reply.rawHeader("Last-Modified");
}

qint64 numberOf(const QByteArray& text)
{
    bool isNumber = false;
    const qint64 number = text.trimmed().toLongLong(&isNumber);
    return isNumber && number >= 0 ? number : -1;
}

bool isEncoded(const QNetworkReply& reply)
{
    const QByteArray encoding = reply.rawHeader("Content-Encoding").trimmed().toLower();
    return !encoding.isEmpty() && encoding != "identity";
}

bool isChunked(const QNetworkReply& reply)
{
    return reply.rawHeader("Transfer-Encoding").toLower().contains("chunked");
}

}  // namespace

CDavDownload::CDavDownload(DavSessionPtr session, const QString& id, const QString& path,
                           AnswerPtr<NUVSBaseInfo> answer)
    : m_session(std::move(session)), m_id(id), m_file(path), m_answer(std::move(answer))
{
}

void CDavDownload::Start()
{
    m_session->LookForMark(m_answer, [self = shared_from_this()] {
        if (!MakeRoomFor(self->m_file.fileName()) || !self->m_file.open(QIODevice::WriteOnly))
            return self->m_answer->Fail(QNetworkReply::ContentAccessDenied);
        self->Get();
    });
}

void CDavDownload::Get()
{
    ++m_attempts;
    m_hasHead = false;
    m_trouble = ETrouble::None;
    SDavOrder order;
    order.verb = "GET";
    order.url = m_session->FileUrlOf(m_id);
    if (m_validator.isEmpty())
        Forget();
    if (m_received > 0)
        order.headers = {{"Range", "bytes=" + QByteArray::number(m_received) + '-'}, {"If-Range", m_validator}};
    // No shared pointer: the request lets go of its handler, which holds one, but not of its order.
    order.takeData = [this](QNetworkReply& reply) { return TakeData(reply); };
    m_session->Connection().Send(order, m_answer,
                                 [self = shared_from_this()](const SDavAnswer& got) { self->GetDone(got); });
}

bool CDavDownload::TakeData(QNetworkReply& reply)
{
    if (!m_hasHead && !TakeHead(reply))
        return false;
    m_answer->ReadyRead();
    while (reply.bytesAvailable() > 0) {
        const QByteArray block = reply.read(BlockSize);
        if (m_received + block.size() > Largest()) {
            m_trouble = ETrouble::WrongContent;
            return false;
        }
        if (m_file.write(block) != block.size()) {
            m_trouble = ETrouble::LocalFile;
            return false;
        }
        m_received += block.size();
    }
    m_answer->Received(m_received, m_total);
    return true;
}

// A body without a promised length might never end.
qint64 CDavDownload::Largest() const
{
    const qint64 told = m_total >= 0 ? m_total : m_session->KnownSize(m_id);
    return told >= 0 ? told : LargestUnknown;
}

bool CDavDownload::TakeHead(const QNetworkReply& reply)
{
    m_hasHead = true;
    if (isEncoded(reply)) {
        m_trouble = ETrouble::WrongContent;
        return false;
    }
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    return status == 206 ? TakeRest(reply) : TakeWhole(reply);
}

bool CDavDownload::TakeWhole(const QNetworkReply& reply)
{
    Forget();
    m_validator = validatorOf(reply);
    m_total = numberOf(reply.rawHeader("Content-Length"));
    // Of a body that simply ends nobody knows whether it is whole.
    if (m_total < 0 && !isChunked(reply))
        m_trouble = ETrouble::WrongContent;
    return m_trouble == ETrouble::None;
}

bool CDavDownload::TakeRest(const QNetworkReply& reply)
{
    const QByteArray expected = "bytes " + QByteArray::number(m_received) + '-';
    const QByteArray range = reply.rawHeader("Content-Range").trimmed();
    const qint64 total = numberOf(range.mid(range.lastIndexOf('/') + 1));
    const bool isAsked = m_received > 0 && range.startsWith(expected);
    if (!isAsked || total < m_received || (m_total >= 0 && total != m_total))
        m_trouble = ETrouble::WrongRange;
    else
        m_total = total;
    return m_trouble == ETrouble::None;
}

// What there is so far is no beginning of what will come.
void CDavDownload::Forget()
{
    m_file.seek(0);
    m_file.resize(0);
    m_received = 0;
    m_total = -1;
    m_validator.clear();
}

bool CDavDownload::IsWhole(const SDavAnswer& got) const
{
    return got.IsSuccess() && m_hasHead && m_trouble == ETrouble::None && (m_total < 0 || m_received == m_total);
}

bool CDavDownload::CanTryAgain(const SDavAnswer& got) const
{
    if (m_attempts >= MostAttempts || m_trouble == ETrouble::LocalFile || m_trouble == ETrouble::WrongContent)
        return false;
    const bool isBroken =
        got.outcome == SDavAnswer::EOutcome::Broken && m_hasHead && got.error != QNetworkReply::OperationCanceledError;
    const bool isRangeRefused = m_trouble == ETrouble::WrongRange || got.status == 416;
    return isBroken || isRangeRefused || (got.IsSuccess() && !IsWhole(got));
}

void CDavDownload::GetDone(const SDavAnswer& got)
{
    if (got.status == 416 || m_trouble == ETrouble::WrongRange)
        m_validator.clear();
    if (IsWhole(got))
        return Confirm();
    if (CanTryAgain(got))
        return Get();
    Fail(got);
}

// A server may promise less than there is. When the listing told another size, it is asked which of the two holds.
void CDavDownload::Confirm()
{
    const qint64 known = m_session->KnownSize(m_id);
    if (known < 0 || known == m_received)
        return Keep();
    const auto look = [self = shared_from_this()](const SDavAnswer& got, const QVector<SDavEntry>& entries) {
        if (!got.IsSuccess())
            return self->Fail(got);
        if (entries.size() != 1 || (entries[0].size >= 0 && entries[0].size != self->m_received))
            return self->Fail(got);
        self->Keep();
    };
    m_session->Look(m_session->FileUrlOf(m_id), 0, m_answer, look);
}

void CDavDownload::Keep()
{
    if (!m_file.flush() || !m_file.commit())
        return m_answer->Fail(QNetworkReply::UnknownContentError);
    m_session->LearnFile(m_id, m_received);
    m_answer->Finish({});
}

void CDavDownload::Fail(const SDavAnswer& got)
{
    Discard(m_file);
    if (got.IsSuccess() || m_trouble != ETrouble::None)
        return m_answer->Fail(QNetworkReply::UnknownContentError);
    m_session->Refuse(got, *m_answer, code::FileMissing);
}

}  // namespace nuvs
