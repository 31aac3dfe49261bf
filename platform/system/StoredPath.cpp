#include <kiv/system/StoredPath.h>

#include "RegularFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <limits>
#include <new>

namespace kiv::system {

namespace {

// Room for the padding that readers of JSON append: growing a block of a gigabyte would copy it.
constexpr int Spare = 64;

bool isSeparator(QChar c)
{
    return c == QLatin1Char('/') || c == QLatin1Char('\\');
}

// "\\server\share" is a network path where the system's separator is "\".
bool startsNetworkPath(const QString& path)
{
    return QDir::separator() == QLatin1Char('\\') && path.size() > 2 && isSeparator(path[0]) && isSeparator(path[1]) &&
           !isSeparator(path[2]);
}

QString withoutLeadingSeparators(const QString& path)
{
    int first = 0;
    while (first < path.size() && isSeparator(path[first]))
        ++first;
    return path.mid(first);
}

bool fail(QString& reason, const QString& text)
{
    reason = text;
    return false;
}

// A name with a null character would silently be another, shorter one for the system.
bool isUsable(const QString& path)
{
    return !path.isEmpty() && !path.contains(QChar(QChar::Null));
}

bool openRegularFile(QFile& file, long long maxBytes, QString& reason, long long& size)
{
    size = FileSize(file.fileName());
    if (size < 0)
        return fail(reason, QFileInfo::exists(file.fileName()) ? QStringLiteral("is not a regular file")
                                                               : QStringLiteral("there is no such file"));
    if (size > maxBytes)
        return fail(reason, QStringLiteral("has %1 bytes, more than the %2 that are read").arg(size).arg(maxBytes));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return fail(reason, QStringLiteral("cannot be read: %1").arg(file.errorString()));
    return true;
}

// Reads as many bytes as the file has now. Some files of the system have no size and never end, and are cut off here.
bool readBytes(QFile& file, long long size, QByteArray& bytes, QString& reason)
{
    bytes.reserve(int(size) + Spare);
    bytes.resize(int(size));
    long long done = 0;
    while (done < size) {
        const qint64 count = file.read(bytes.data() + done, size - done);
        if (count < 0)
            return fail(reason, QStringLiteral("cannot be read: %1").arg(file.errorString()));
        if (count == 0)
            return fail(reason, QStringLiteral("became shorter while it was read"));
        done += count;
    }
    return true;
}

bool openForSaving(QSaveFile& file, QString& reason)
{
    const QString path = file.fileName();
    if (!isUsable(path))
        return fail(reason, QStringLiteral("is no file name"));
    if (QFileInfo::exists(path) && !IsRegularFile(path))
        return fail(reason, QStringLiteral("is not a regular file"));
    const QString folder = QFileInfo(path).absolutePath();
    if (!QDir().mkpath(folder))
        return fail(reason, QStringLiteral("the folder \"%1\" cannot be made").arg(folder));
    if (!file.open(QIODevice::WriteOnly))
        return fail(reason, QStringLiteral("cannot be written: %1").arg(file.errorString()));
    return true;
}

// What is still buffered is written first: committing would not notice that it could not be.
bool commit(QSaveFile& file, QString& reason)
{
    return (file.flush() && file.commit()) ||
           fail(reason, QStringLiteral("cannot be written: %1").arg(file.errorString()));
}

bool copyBytes(QFile& from, long long size, QSaveFile& to, QString& reason)
{
    constexpr long long blockSize = 1 << 20;
    QByteArray block;
    for (long long left = size; left > 0; left -= block.size()) {
        if (!readBytes(from, qMin(left, blockSize), block, reason))
            return false;
        if (to.write(block) != block.size())
            return fail(reason, QStringLiteral("cannot be written: %1").arg(to.errorString()));
    }
    return true;
}

}  // namespace

QString NativePath(const QString& stored)
{
    QString native;
    native.reserve(stored.size());
    if (startsNetworkPath(stored))
        native += QDir::separator();
    const int start = native.size();
    for (const QChar c : stored) {
        if (!isSeparator(c))
            native += c;
        else if (native.size() == start || native.back() != QDir::separator())
            native += QDir::separator();
    }
    return native;
}

QString NativePath(const std::wstring& stored)
{
    return NativePath(QString::fromStdWString(stored));
}

QString JoinPath(const std::wstring& base, const std::wstring& tail)
{
    QString path = NativePath(base);
    if (path.isEmpty() || tail.empty())
        return path + NativePath(tail);
    if (!path.endsWith(QDir::separator()))
        path += QDir::separator();
    return path + NativePath(withoutLeadingSeparators(QString::fromStdWString(tail)));
}

bool IsAbsolutePath(const std::wstring& stored)
{
    const QString path = QString::fromStdWString(stored.substr(0, 2));
    if (path.isEmpty())
        return false;
    const QChar drive = path[0].toUpper();
    const bool isLetter = drive >= QLatin1Char('A') && drive <= QLatin1Char('Z');
    return isSeparator(path[0]) || (isLetter && path.size() == 2 && path[1] == QLatin1Char(':'));
}

bool ClimbsOut(const std::wstring& stored)
{
    return SlashedPath(stored).split(QLatin1Char('/')).contains(QLatin1String(".."));
}

QString SlashedPath(const std::wstring& stored)
{
    return QString::fromStdWString(stored).replace(QLatin1Char('\\'), QLatin1Char('/'));
}

bool IsPlainName(const std::wstring& name)
{
    static const QString forbidden = QStringLiteral("/\\:") + QChar(QChar::Null);
    const QString text = QString::fromStdWString(name);
    const bool plain = std::none_of(text.cbegin(), text.cend(), [](QChar c) { return forbidden.contains(c); });
    return plain && !text.isEmpty() && text != QLatin1String(".") && text != QLatin1String("..");
}

std::wstring LastSegment(const std::wstring& stored)
{
    return stored.substr(stored.find_last_of(L"/\\") + 1);
}

bool IsRegularFile(const QString& path)
{
    return FileSize(path) >= 0;
}

long long FileSize(const QString& path)
{
    if (!isUsable(path))
        return -1;
#ifdef Q_OS_WIN
    return RegularFileSize(QDir::toNativeSeparators(path).toStdWString());
#else
    return RegularFileSize(QFile::encodeName(path).toStdString());
#endif
}

bool ReadWholeFile(const QString& path, long long maxBytes, QByteArray& bytes, QString& reason)
{
    // What a QByteArray can hold, less its own head.
    constexpr long long most = std::numeric_limits<int>::max() - 64 - Spare;
    QFile file(path);
    QByteArray read;
    try {
        long long size = 0;
        if (!openRegularFile(file, qMin(maxBytes, most), reason, size) || !readBytes(file, size, read, reason))
            return false;
    } catch (const std::bad_alloc&) {
        return fail(reason, QStringLiteral("is too large for the memory"));
    }
    bytes = std::move(read);
    return true;
}

bool WriteWholeFile(const QString& path, const QByteArray& bytes, QString& reason)
{
    QSaveFile file(path);
    if (!openForSaving(file, reason))
        return false;
    file.write(bytes);
    return commit(file, reason);
}

bool CopyWholeFile(const QString& from, const QString& to, long long maxBytes, QString& reason)
{
    QFile source(from);
    long long size = 0;
    if (!openRegularFile(source, maxBytes, reason, size))
        return false;
    // A file that is held open cannot be renamed over everywhere, and is already what it should become.
    if (QFileInfo(from) == QFileInfo(to))
        return true;
    QSaveFile target(to);
    return openForSaving(target, reason) && copyBytes(source, size, target, reason) && commit(target, reason);
}

}  // namespace kiv::system
