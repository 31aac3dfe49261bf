#include "AppearanceArchive.h"

#include "ArchiveReader.h"
#include "ArchiveWriter.h"
#include "JsonDocument.h"

#include <glenox/StdStringTrans.h>
#include <kiv/AppearanceLibraryManager.h>
#include <kiv/system/StoredPath.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>

#include <new>

namespace kiv {

namespace {

const char* const DocumentName = "appearance.json";
const char* const TextureFolder = "textures/";
const char* const UserTextures = "UserLib Textures";
constexpr long long MaxDocumentBytes = 16LL * 1024 * 1024;

/// A texture member that was checked.
struct Texture {
    QByteArray bytes;
    String hash;
};
using TextureMap = std::map<String, Texture>;  // by member name

std::vector<CAppearanceInstancePtr> texturesOf(const CAppearanceInstance& appearance)
{
    std::vector<CAppearanceInstancePtr> textures;
    for (const auto& [key, value] : appearance) {
        const auto* sub = value->TryGet<CAppearanceInstancePtr>();
        if (!sub || !*sub)
            continue;
        if (IsTexture(**sub) && !(*sub)->GetTextureFile().empty())
            textures.push_back(*sub);
        const auto below = texturesOf(**sub);
        textures.insert(textures.end(), below.begin(), below.end());
    }
    return textures;
}

/// The file type of a picture that a texture may be, told by its first bytes as the suffix of its name; empty for
/// anything else.
String pictureSuffix(const QByteArray& bytes)
{
    if (bytes.startsWith("\x89PNG\r\n\x1a\n"))
        return ".png";
    if (bytes.startsWith("\xff\xd8\xff"))
        return ".jpg";
    return bytes.startsWith("BM") ? ".bmp" : String();
}

String contentHash(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex().toStdString();
}

/// The member that a texture file names, with or without the folder; empty when it names none.
String memberOf(const CArchiveReader& archive, const String& textureFile)
{
    const String name = system::SlashedPath(GStdStringTrans::StringToWString(textureFile)).toUtf8().toStdString();
    for (const String& member : {name, TextureFolder + name}) {
        if (archive.Contains(member))
            return member;
    }
    return {};
}

CAppearanceInstancePtr readDocument(CAppearanceParser& parser, CArchiveReader& archive, CParseError& error)
{
    QByteArray document;
    if (!archive.Read(DocumentName, MaxDocumentBytes, document, error))
        return {};
    const auto appearance = parser.AppearanceFromString(document.toStdString());
    if (!appearance) {
        archive.Refuse(DocumentName, parser.GetLastError().reason, error);
        error.place += parser.GetLastError().place;
    }
    return appearance;
}

bool readTextures(CArchiveReader& archive, const CAppearanceInstance& appearance, TextureMap& textures,
                  CParseError& error)
{
    for (const auto& texture : texturesOf(appearance)) {
        const String member = memberOf(archive, texture->GetTextureFile());
        if (member.empty() || textures.count(member))
            continue;
        QByteArray bytes;
        if (!archive.Read(member, CArchiveReader::MaxUnpackedBytes, bytes, error))
            return false;
        if (pictureSuffix(bytes).empty())
            return archive.Refuse(member, "is no PNG, JPEG or BMP picture", error);
        textures[member] = {bytes, contentHash(bytes)};
    }
    return true;
}

/// Writes the textures, or nothing at all.
bool storeTextures(const QString& folder, const TextureMap& textures, QString& reason)
{
    const bool hadFolder = QDir(folder).exists();
    QStringList written;
    for (const auto& [member, texture] : textures) {
        const QString path = QDir(folder).filePath(QString::fromStdString(texture.hash));
        if (system::IsRegularFile(path))
            continue;
        if (system::WriteWholeFile(path, texture.bytes, reason)) {
            written.append(path);
            continue;
        }
        for (const QString& file : written)
            QFile::remove(file);
        if (!hadFolder)
            QDir().rmdir(folder);
        return false;
    }
    return true;
}

bool unpackTextures(CArchiveReader& archive, const CAppearanceInstance& appearance, const std::wstring& favorites,
                    CParseError& error)
{
    TextureMap textures;
    if (!readTextures(archive, appearance, textures, error))
        return false;
    if (!textures.empty() && favorites.empty())
        return archive.Refuse({}, "has textures, and there is no favourite library to unpack them to", error);
    QString reason;
    const QString folder = system::JoinPath(favorites, GStdStringTrans::StringToWString(UserTextures));
    if (!storeTextures(folder, textures, reason))
        return archive.Refuse({}, "a texture cannot be stored: " + reason.toLocal8Bit().toStdString(), error);
    for (const auto& texture : texturesOf(appearance)) {
        const auto found = textures.find(memberOf(archive, texture->GetTextureFile()));
        if (found != textures.end())
            texture->SetTextureFile(String(UserTextures) + "\\" + found->second.hash);
    }
    return true;
}

/// Collects what an archive is made of, within the limits that its reader will have.
class CTexturePacker {
public:
    CTexturePacker(CArchiveWriter& archive, const CAppearanceLibraryManager& manager)
        : m_archive(archive), m_manager(manager)
    {
    }

    /// Adds the texture's file and lets the texture name it there. A file that is missing or no picture is left out,
    /// and the texture stays as it is. False when the file does not fit in.
    bool Pack(CAppearanceInstance& texture)
    {
        const std::wstring stored = GStdStringTrans::StringToWString(texture.GetTextureFile());
        const QString file = system::NativePath(m_manager.ResolvePath(stored));
        if (system::FileSize(file) > m_left)
            return false;
        QByteArray bytes;
        QString reason;
        if (!system::ReadWholeFile(file, m_left, bytes, reason))
            return true;
        const String suffix = pictureSuffix(bytes);
        if (!suffix.empty())
            texture.SetTextureFile(add(bytes, suffix));
        return true;
    }

private:
    String add(const QByteArray& bytes, const String& suffix)
    {
        const String member = TextureFolder + contentHash(bytes) + suffix;
        if (!m_archive.Contains(member)) {
            m_archive.Add(member, bytes, suffix == ".bmp");
            m_left -= bytes.size();
        }
        return member;
    }

    CArchiveWriter& m_archive;
    const CAppearanceLibraryManager& m_manager;
    long long m_left = CArchiveReader::MaxUnpackedBytes - MaxDocumentBytes;
};

bool pack(CArchiveWriter& archive, const CAppearanceParser& parser, const CAppearanceLibraryManager& manager,
          const CAppearanceInstance& appearance, QString& reason)
{
    const auto packed = appearance.Clone(appearance.GetId());
    CTexturePacker packer(archive, manager);
    for (const auto& texture : texturesOf(*packed)) {
        if (packer.Pack(*texture))
            continue;
        reason = QStringLiteral("the textures are too large for an archive");
        return false;
    }
    archive.Add(DocumentName, QByteArray::fromStdString(parser.AppearanceToString(packed)), false);
    return true;
}

bool write(const CArchiveWriter& archive, const std::wstring& path, QString& reason)
{
    String problem;
    const QByteArray bytes = archive.ToBytes(problem);
    reason = QString::fromLocal8Bit(problem.c_str());
    return !bytes.isEmpty() && system::WriteWholeFile(system::NativePath(path), bytes, reason);
}

}  // namespace

CAppearanceInstancePtr ReadAppearanceArchive(CAppearanceParser& parser, const CAppearanceLibraryManager& manager,
                                             const std::wstring& path, CParseError& error)
{
    CArchiveReader archive;
    try {
        if (!archive.Open(path, error))
            return {};
        const auto appearance = readDocument(parser, archive, error);
        if (appearance && unpackTextures(archive, *appearance, manager.GetFavoriteLibraryPath(), error))
            return appearance;
    } catch (const std::bad_alloc&) {
        archive.Refuse({}, "is too large for the memory", error);
    }
    return {};
}

bool WriteAppearanceArchive(const CAppearanceParser& parser, const CAppearanceLibraryManager& manager,
                            const CAppearanceInstance& appearance, const std::wstring& path, CParseError& error)
{
    QString reason;
    try {
        CArchiveWriter archive;
        if (pack(archive, parser, manager, appearance, reason) && write(archive, path, reason))
            return true;
    } catch (const std::bad_alloc&) {
        reason = QStringLiteral("is too large for the memory");
    }
    error = {FilePlace(path), reason.toLocal8Bit().toStdString()};
    return false;
}

}  // namespace kiv
