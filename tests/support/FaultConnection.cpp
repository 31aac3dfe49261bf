#include "FaultConnection.h"

#include <QUrl>

#include <limits>

namespace {

constexpr int HugeBytes = 100 * 1000 * 1000;
constexpr int Pieces = 15;

QByteArray headOf(const CHttpAnswer& answer, qint64 length)
{
    QByteArray head = "HTTP/1.1 " + QByteArray::number(answer.status) + " Told\r\n";
    for (const auto& header : answer.headers)
        head += header.first + ": " + header.second + "\r\n";
    if (answer.status != 204 && length >= 0)
        head += "Content-Length: " + QByteArray::number(length) + "\r\n";
    return head + "\r\n";
}

void parseHead(const QByteArray& head, CHttpRequest& request)
{
    const QList<QByteArray> lines = head.split('\n');
    const QList<QByteArray> words = lines[0].split(' ');
    request.method = words[0];
    request.path = QUrl::fromEncoded(words.value(1)).path(QUrl::FullyDecoded);
    for (int i = 1; i < lines.size(); ++i) {
        const int colon = lines[i].indexOf(':');
        if (colon > 0)
            request.headers[lines[i].left(colon).toLower()] = lines[i].mid(colon + 1).trimmed();
    }
}

// The part that starts a byte too early, said honestly.
CHttpAnswer anotherPart(CHttpRequest request, const CDavFolder& folder)
{
    const qint64 first = request.Header("range").mid(6).chopped(1).toLongLong();
    request.headers["range"] = "bytes=" + QByteArray::number(first - 1) + '-';
    return folder.Answer(request);
}

CHttpRequest withoutRange(CHttpRequest request)
{
    request.headers.remove("range");
    return request;
}

CHttpAnswer challenge()
{
    return {401, {{"WWW-Authenticate", "Basic realm=\"faults\""}}, {}};
}

CHttpAnswer withEntry(CHttpAnswer listing, const QByteArray& href)
{
    listing.body.replace("</D:multistatus>",
                         "<D:response><D:href>" + href +
                             "</D:href><D:propstat><D:prop><D:resourcetype/></D:prop><D:status>HTTP/1.1 200 OK"
                             "</D:status></D:propstat></D:response></D:multistatus>");
    return listing;
}

}  // namespace

CFaultConnection::CFaultConnection(int descriptor, CFaultScript& script, const CDavFolder& folder,
                                   const QByteArray& authorization)
    : m_socket(descriptor), m_script(script), m_folder(folder), m_authorization(authorization)
{
}

void CFaultConnection::Run()
{
    // A body that is cut must have reached the peer by then: one that has seen nothing yet would just ask again.
    m_socket.KeepStep();
    while (ServeOne()) {
    }
    Shutdown();
}

bool CFaultConnection::ServeOne()
{
    CHttpRequest request;
    if (!ReadHead(request))
        return false;
    // First, so that who waits for this request knows that the next one gets another fault.
    const auto fault = m_script.Take(request.method, request.path);
    m_request = m_script.Begin(
        {request.method, request.path, 0, request.headers.contains("authorization"), request.Header("range")});
    if (fault && fault->kind == CFault::Hang) {
        m_script.WaitToGoOn();
        return false;
    }
    if (!ReadBody(request))
        return false;
    if (!fault)
        return Send(Duty(request));
    const bool goesOn = Misbehave(request, *fault);
    if (fault->done)
        fault->done();
    return goesOn;
}

bool CFaultConnection::ReadHead(CHttpRequest& request)
{
    while (!m_unread.contains("\r\n\r\n")) {
        const QByteArray bytes = m_socket.Read();
        if (bytes.isEmpty())
            return false;
        m_unread += bytes;
    }
    const int end = m_unread.indexOf("\r\n\r\n");
    parseHead(m_unread.left(end), request);
    m_unread.remove(0, end + 4);
    return true;
}

bool CFaultConnection::ReadBody(CHttpRequest& request)
{
    const int length = request.Header("content-length").toInt();
    while (m_unread.size() < length) {
        const QByteArray bytes = m_socket.Read();
        if (bytes.isEmpty())
            return false;
        m_unread += bytes;
    }
    request.body = m_unread.left(length);
    m_unread.remove(0, length);
    return true;
}

CHttpAnswer CFaultConnection::Duty(const CHttpRequest& request) const
{
    if (!m_authorization.isEmpty() && request.Header("authorization") != m_authorization)
        return challenge();
    return m_folder.Answer(request);
}

bool CFaultConnection::Misbehave(const CHttpRequest& request, const CFault& fault)
{
    switch (fault.kind) {
    case CFault::Close:
        return false;
    case CFault::Status:
        return Send(fault.status == 401 ? challenge() : CHttpAnswer{fault.status, {}, fault.text});
    case CFault::Redirect:
        return Send({302, {{"Location", fault.text}}, {}});
    case CFault::Body:
        return Send({207, {{"Content-Type", "application/xml"}}, fault.text});
    case CFault::HugeBody:
        return SendHugeBody();
    case CFault::IgnoreRange:
        return Send(Duty(withoutRange(request)));
    case CFault::WrongRange:
        return Send(request.headers.contains("range") ? anotherPart(request, m_folder) : Duty(request));
    default:
        return Distort(Duty(request), fault);
    }
}

bool CFaultConnection::Distort(const CHttpAnswer& honest, const CFault& fault)
{
    const int size = honest.body.size();
    switch (fault.kind) {
    case CFault::CutBody:
        return Send(honest, size, BodyEnd::Cut);
    case CFault::HangInBody:
        return Send(honest, size, BodyEnd::Waiting);
    case CFault::OtherStatus:
        return Send({fault.status, honest.headers, honest.body});
    case CFault::Chunked:
        return SendChunks(honest, 1);
    case CFault::Endless:
        return SendChunks(honest, std::numeric_limits<int>::max());
    case CFault::Trickle:
        return SendSlowly(honest);
    case CFault::LongLength:
        return Send(honest, size + 10) && false;
    case CFault::ShortLength:
        return Send(honest, size / 2) && false;
    case CFault::Entry:
        return Send(withEntry(honest, fault.text));
    default:  // CloseAfter
        return false;
    }
}

bool CFaultConnection::Send(const CHttpAnswer& answer, qint64 announced, BodyEnd end)
{
    m_script.Finish(m_request, answer.status);
    // Of no body a half is the whole: the peer would use the connection for its next request.
    if (end == BodyEnd::Waiting && answer.body.isEmpty())
        m_script.WaitToGoOn();
    const int half = end == BodyEnd::Whole ? answer.body.size() : answer.body.size() / 2;
    if (!m_socket.Write(headOf(answer, announced < 0 ? answer.body.size() : announced) + answer.body.left(half)))
        return false;
    if (end == BodyEnd::Waiting && half < answer.body.size())
        m_script.WaitToGoOn();
    return end != BodyEnd::Cut && m_socket.Write(answer.body.mid(half));
}

bool CFaultConnection::SendSlowly(const CHttpAnswer& answer)
{
    m_script.Finish(m_request, answer.status);
    const int piece = answer.body.size() / Pieces + 1;
    bool goesOn = m_socket.Write(headOf(answer, answer.body.size()));
    for (int first = 0; goesOn && first < answer.body.size(); first += piece)
        goesOn = m_script.Pause() && m_socket.Write(answer.body.mid(first, piece));
    return goesOn;
}

bool CFaultConnection::SendChunks(CHttpAnswer answer, int count)
{
    m_script.Finish(m_request, answer.status);
    const QByteArray chunk = QByteArray::number(answer.body.size(), 16) + "\r\n" + answer.body + "\r\n";
    answer.headers.append(qMakePair(QByteArray("Transfer-Encoding"), QByteArray("chunked")));
    bool goesOn = m_socket.Write(headOf(answer, -1));
    for (int i = 0; goesOn && i < count; ++i)
        goesOn = m_socket.Write(chunk);
    return goesOn && m_socket.Write("0\r\n\r\n");
}

bool CFaultConnection::SendHugeBody()
{
    const QByteArray start = "<D:multistatus xmlns:D=\"DAV:\">", end = "</D:multistatus>";
    const QByteArray entry = withEntry({207, {}, end}, "/dav/KIV/a").body.chopped(end.size());
    const int count = HugeBytes / entry.size();
    m_script.Finish(m_request, 207);
    if (!m_socket.Write(headOf({207, {}, {}}, start.size() + qint64(count) * entry.size() + end.size()) + start))
        return false;
    for (int i = 0; i < count; ++i)
        if (!m_socket.Write(entry))
            return false;
    return m_socket.Write(end);
}
