#include "EnvironmentLighting.h"
#include "LightingFormat.h"
#include "ParallelFor.h"

#include <QCryptographicHash>
#include <QDir>
#include <QSaveFile>
#include <QStandardPaths>

#include <cstring>

namespace kiv {

namespace {

// A sky takes 4 MB at most.
constexpr int MaxFiles = 8;
constexpr int DigestLength = 16;

// Written as it lies in memory: the cache stays on its machine, and the mark of another byte order is another number.
struct Header {
    std::uint32_t mark = 0x4b4c4731;
    std::uint32_t version = LightingVersion;
    std::int32_t size = 0;
    std::int32_t levels = 0;
    char digest[DigestLength] = {};  // of what follows

    bool isLike(const Header& other) const
    {
        return mark == other.mark && version == other.version && size == other.size && levels == other.levels;
    }
};

Header headerFor(int size)
{
    Header header;
    header.size = size;
    header.levels = LightingLevels(size);
    return header;
}

struct Bytes {
    char* data;
    std::size_t length;
};

// The parts of the file behind its header, in their order.
std::vector<Bytes> partsOf(CEnvironmentLighting& lighting)
{
    std::vector<Bytes> parts{{reinterpret_cast<char*>(lighting.irradiance.data()), sizeof lighting.irradiance}};
    for (std::vector<std::uint16_t>& level : lighting.levels)
        parts.push_back({reinterpret_cast<char*>(level.data()), level.size() * sizeof(std::uint16_t)});
    return parts;
}

// In pieces that all cores share. It tells damage, not malice, so it is the fastest digest that Qt has.
QByteArray digestOf(const std::vector<Bytes>& parts)
{
    constexpr std::size_t pieceLength = 256 * 1024;
    std::vector<Bytes> pieces;
    for (const Bytes& part : parts) {
        for (std::size_t at = 0; at < part.length; at += pieceLength)
            pieces.push_back({part.data + at, std::min(pieceLength, part.length - at)});
    }
    std::vector<QByteArray> digests(pieces.size());
    ParallelFor(static_cast<int>(pieces.size()), [&](int i) {
        const auto index = static_cast<std::size_t>(i);
        const auto length = static_cast<int>(pieces[index].length);
        digests[index] =
            QCryptographicHash::hash(QByteArray::fromRawData(pieces[index].data, length), QCryptographicHash::Md4);
    });
    QCryptographicHash all(QCryptographicHash::Md4);
    for (const QByteArray& digest : digests)
        all.addData(digest);
    return all.result();
}

QString folder()
{
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
    return cache.isEmpty() ? QString() : cache + QStringLiteral("/environment-lighting");
}

// Rows of RGBA have no padding, so a face's bytes are its pixels.
QString fileName(const CCubeFaces& faces)
{
    std::vector<Bytes> parts;
    for (const QImage& face : faces)
        parts.push_back({const_cast<char*>(reinterpret_cast<const char*>(face.constBits())),
                         static_cast<std::size_t>(face.sizeInBytes())});
    return QStringLiteral("%1-%2.light").arg(QString::fromLatin1(digestOf(parts).toHex())).arg(LightingVersion);
}

CEnvironmentLighting emptyLighting(int size)
{
    CEnvironmentLighting lighting;
    lighting.size = size;
    for (int level = 0; level < LightingLevels(size); ++level)
        lighting.levels.emplace_back(LightingLevelLength(size, level));
    return lighting;
}

bool readAll(QFile& file, char* data, std::size_t length)
{
    return file.read(data, static_cast<qint64>(length)) == static_cast<qint64>(length);
}

// Empty when there is no such file or it is not whole.
CEnvironmentLighting load(const QString& path, int size)
{
    QFile file(path);
    Header header;
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) ||
        !readAll(file, reinterpret_cast<char*>(&header), sizeof header) || !header.isLike(headerFor(size)))
        return {};
    CEnvironmentLighting lighting = emptyLighting(size);
    const std::vector<Bytes> parts = partsOf(lighting);
    for (const Bytes& part : parts) {
        if (!readAll(file, part.data, part.length))
            return {};
    }
    const bool isWhole = file.atEnd() && digestOf(parts) == QByteArray::fromRawData(header.digest, DigestLength);
    return isWhole ? lighting : CEnvironmentLighting();
}

// Makes room: the files that were written last stay.
void removeOld(const QDir& cache)
{
    const QStringList names = cache.entryList({QStringLiteral("*.light")}, QDir::Files, QDir::Time);
    for (int i = MaxFiles; i < names.size(); ++i)
        QFile::remove(cache.filePath(names[i]));
}

// A cache that cannot be written costs time only, so nobody is told.
void save(const QString& path, CEnvironmentLighting& lighting)
{
    QDir().mkpath(QFileInfo(path).path());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return;
    const std::vector<Bytes> parts = partsOf(lighting);
    Header header = headerFor(lighting.size);
    std::memcpy(header.digest, digestOf(parts).constData(), DigestLength);
    file.write(reinterpret_cast<const char*>(&header), sizeof header);
    for (const Bytes& part : parts)
        file.write(part.data, static_cast<qint64>(part.length));
    if (file.flush() && file.commit())
        removeOld(QFileInfo(path).dir());
}

}  // namespace

CEnvironmentLighting CachedLighting(const CCubeFaces& faces)
{
    try {
        const int size = LightingSize(faces);
        if (size == 0 || folder().isEmpty())
            return PrepareLighting(faces);
        const QString path = folder() + QLatin1Char('/') + fileName(faces);
        CEnvironmentLighting lighting = load(path, size);
        if (lighting.IsEmpty()) {
            lighting = PrepareLighting(faces);
            if (!lighting.IsEmpty())
                save(path, lighting);
        }
        return lighting;
    } catch (...) {
        // No memory: the scene stays without the sky's light.
        return {};
    }
}

}  // namespace kiv
