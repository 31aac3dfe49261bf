#include <kiv/AppearanceTextureHelper.h>

#include <kiv/AppearanceLibraryManager.h>
#include <kiv/system/StoredPath.h>

#include <QCryptographicHash>
#include <QFile>

namespace kiv {

namespace {

constexpr long long MaxTextureBytes = 2LL * 1024 * 1024 * 1024;

/// The file that the manager resolves the stored path to; empty when it is none that may be copied.
QString textureFile(const CAppearanceLibraryManager& manager, const std::wstring& path)
{
    const QString file = system::NativePath(manager.ResolvePath(path));
    const long long size = system::FileSize(file);
    return size < 0 || size > MaxTextureBytes ? QString() : file;
}

}  // namespace

bool CAppearanceTextureHelper::CopyTextureToPath(const std::wstring& source, const std::wstring& targetFolder,
                                                 bool overwrite) const
{
    return CopyTextureToPathAndRename(source, targetFolder, system::LastSegment(source), overwrite);
}

bool CAppearanceTextureHelper::CopyTextureToPathAndRename(const std::wstring& source, const std::wstring& targetFolder,
                                                          const std::wstring& newName, bool overwrite) const
{
    const QString from = textureFile(m_manager, source);
    if (from.isEmpty() || targetFolder.empty() || !system::IsPlainName(newName))
        return false;
    const QString to = system::JoinPath(targetFolder, newName);
    QString reason;
    return (!overwrite && system::IsRegularFile(to)) || system::CopyWholeFile(from, to, MaxTextureBytes, reason);
}

String CAppearanceTextureHelper::ParserTextureFileToSha(const std::wstring& path) const
{
    QFile file(textureFile(m_manager, path));
    QCryptographicHash hash(QCryptographicHash::Sha1);
    if (file.fileName().isEmpty() || !file.open(QIODevice::ReadOnly) || !hash.addData(&file))
        return {};
    return hash.result().toHex().toStdString();
}

}  // namespace kiv
