#include "DavFolder.h"

#include <QDateTime>
#include <QDir>
#include <QLocale>
#include <QRegularExpression>
#include <QSaveFile>
#include <QUrl>

namespace {

// As Apache has it: what the standard calls "path-absolute", a folder with a "/" at its end.
QByteArray hrefOf(const QString& path, const QFileInfo& file)
{
    QByteArray href = QUrl::toPercentEncoding(path, "/");
    if (file.isDir() && !href.endsWith('/'))
        href += '/';
    return href;
}

QByteArray dateOf(const QFileInfo& file)
{
    return QLocale::c().toString(file.lastModified().toUTC(), "ddd, dd MMM yyyy hh:mm:ss 'GMT'").toLatin1();
}

QByteArray tagOf(const QFileInfo& file)
{
    return '"' + QByteArray::number(file.size(), 16) + '-' +
           QByteArray::number(file.lastModified().toMSecsSinceEpoch(), 16) + '"';
}

QByteArray propertiesOf(const QFileInfo& file)
{
    const QByteArray date = "<D:getlastmodified>" + dateOf(file) + "</D:getlastmodified>";
    if (file.isDir())
        return "<D:resourcetype><D:collection/></D:resourcetype>" + date;
    return "<D:resourcetype/><D:getcontentlength>" + QByteArray::number(file.size()) + "</D:getcontentlength>" +
           "<D:getetag>" + tagOf(file) + "</D:getetag>" + date;
}

QByteArray responseOf(const QString& path, const QFileInfo& file)
{
    return "<D:response><D:href>" + hrefOf(path, file) + "</D:href><D:propstat><D:prop>" + propertiesOf(file) +
           "</D:prop><D:status>HTTP/1.1 200 OK</D:status></D:propstat></D:response>\n";
}

QByteArray childrenOf(const QString& path, const QString& folder)
{
    QByteArray responses;
    const QString base = path.endsWith('/') ? path : path + '/';
    const auto entries = QDir(folder).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    for (const QFileInfo& entry : entries)
        responses += responseOf(base + entry.fileName(), entry);
    return responses;
}

CHttpAnswer plain(int status)
{
    return {status, {}, {}};
}

bool remove(const QString& path)
{
    return QFileInfo(path).isDir() ? QDir(path).removeRecursively() : QFile::remove(path);
}

// Where the answer begins; negative when the range cannot be met.
qint64 firstByte(const CHttpRequest& request, const QFileInfo& file)
{
    const QByteArray range = request.Header("range");
    const QByteArray condition = request.Header("if-range");
    const bool stands = condition.isEmpty() || condition == tagOf(file) || condition == dateOf(file);
    if (!stands || !range.startsWith("bytes=") || !range.endsWith('-'))
        return 0;
    const qint64 first = range.mid(6, range.size() - 7).toLongLong();
    return first < file.size() ? first : -1;
}

}  // namespace

CHttpAnswer CDavFolder::Answer(const CHttpRequest& request) const
{
    using Operation = CHttpAnswer (CDavFolder::*)(const CHttpRequest&) const;
    static const QMap<QByteArray, Operation> operations = {
        {"PROPFIND", &CDavFolder::Propfind}, {"MKCOL", &CDavFolder::MakeCollection}, {"PUT", &CDavFolder::Put},
        {"MOVE", &CDavFolder::Move},         {"DELETE", &CDavFolder::Delete},        {"GET", &CDavFolder::Get}};
    if (request.path.contains("/../") || request.path.endsWith("/..") || request.path.contains(QChar(0)))
        return plain(400);
    const auto operation = operations.find(request.method);
    return operation == operations.end() ? plain(501) : (this->*operation.value())(request);
}

CHttpAnswer CDavFolder::Propfind(const CHttpRequest& request) const
{
    const QFileInfo file(LocalPath(request.path));
    if (!file.exists())
        return plain(404);
    QByteArray body = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<D:multistatus xmlns:D=\"DAV:\">\n";
    body += responseOf(request.path, file);
    if (file.isDir() && request.Header("depth") != "0")
        body += childrenOf(request.path, file.filePath());
    return {207, {{"Content-Type", "application/xml; charset=\"utf-8\""}}, body + "</D:multistatus>\n"};
}

CHttpAnswer CDavFolder::MakeCollection(const CHttpRequest& request) const
{
    const QString path = LocalPath(request.path);
    if (QFileInfo::exists(path))
        return plain(405);
    if (!HasParent(request.path))
        return plain(409);
    return plain(QDir().mkdir(path) ? 201 : 500);
}

CHttpAnswer CDavFolder::Put(const CHttpRequest& request) const
{
    const QString path = LocalPath(request.path);
    if (QFileInfo(path).isDir())
        return plain(405);
    if (!HasParent(request.path))
        return plain(409);
    const bool existed = QFileInfo::exists(path);
    QSaveFile file(path);
    const bool written =
        file.open(QIODevice::WriteOnly) && file.write(request.body) == request.body.size() && file.commit();
    return plain(!written ? 500 : existed ? 204 : 201);
}

CHttpAnswer CDavFolder::Move(const CHttpRequest& request) const
{
    const QString path = LocalPath(request.path);
    const QString target = QUrl::fromEncoded(request.Header("destination")).path(QUrl::FullyDecoded);
    if (!QFileInfo::exists(path))
        return plain(404);
    if (!HasParent(target))
        return plain(409);
    const bool existed = QFileInfo::exists(LocalPath(target));
    if (existed && request.Header("overwrite") == "F")
        return plain(412);
    if (existed && !remove(LocalPath(target)))
        return plain(500);
    return plain(!QFile::rename(path, LocalPath(target)) ? 500 : existed ? 204 : 201);
}

CHttpAnswer CDavFolder::Delete(const CHttpRequest& request) const
{
    if (!QFileInfo::exists(LocalPath(request.path)))
        return plain(404);
    return plain(remove(LocalPath(request.path)) ? 204 : 500);
}

CHttpAnswer CDavFolder::Get(const CHttpRequest& request) const
{
    const QFileInfo info(LocalPath(request.path));
    QFile file(info.filePath());
    if (info.isDir() || !file.open(QIODevice::ReadOnly))
        return plain(info.isDir() ? 405 : 404);
    const qint64 first = firstByte(request, info);
    if (first < 0)
        return plain(416);
    file.seek(first);
    CHttpAnswer answer{200, {{"ETag", tagOf(info)}, {"Last-Modified", dateOf(info)}}, file.readAll()};
    if (first == 0)
        return answer;
    answer.status = 206;
    answer.headers.append({"Content-Range", "bytes " + QByteArray::number(first) + '-' +
                                                QByteArray::number(info.size() - 1) + '/' +
                                                QByteArray::number(info.size())});
    return answer;
}

bool CDavFolder::HasParent(const QString& path) const
{
    return QFileInfo(LocalPath(QString(path).remove(QRegularExpression("/[^/]*/?$")))).isDir();
}
