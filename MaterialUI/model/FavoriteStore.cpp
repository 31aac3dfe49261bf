#include "FavoriteStore.h"

#include "AppearanceTextures.h"
#include "MaterialConstants.h"
#include "MaterialHelper.h"

#include <glenox/StdStringTrans.h>
#include <kiv/AppearanceParser.h>
#include <kiv/AppearanceTextureHelper.h>
#include <kiv/system/StoredPath.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace kiv {

namespace {

const wchar_t* const TextureFolder = L"UserLib Textures";
constexpr long long MaxTextureBytes = 2LL * 1024 * 1024 * 1024;

// Read once more, since who could not read it tells no reason.
QString whyUnreadable(const QString& file)
{
    QByteArray bytes;
    QString reason;
    system::ReadWholeFile(file, MaxTextureBytes, bytes, reason);
    return reason;
}

QString noPicture()
{
    return QCoreApplication::translate("CFavoriteStore", "不是可用作贴图的图片（JPG、PNG 或 BMP）");
}

}  // namespace

bool CFavoriteStore::TakeTextures(const CAppearanceInstance& appearance)
{
    const auto textures = FindTextures(appearance);
    return std::all_of(textures.begin(), textures.end(), [this](const auto& texture) { return takeTexture(*texture); });
}

// A document from elsewhere may name any file of this machine, and what is taken goes to the cloud.
bool CFavoriteStore::takeTexture(CAppearanceInstance& texture)
{
    const std::string stored = texture.GetTextureFile();
    const QString source = QString::fromLocal8Bit(m_manager.ResolvePath(stored).c_str());
    const std::wstring hash = GStdStringTrans::StringToWString(
        CAppearanceTextureHelper(m_manager).ParserTextureFileToSha(source.toStdWString()));
    if (hash.empty())
        return fail(source.isEmpty() ? QString::fromLocal8Bit(stored.c_str()) : source, whyUnreadable(source));
    if (!CMaterialHelper::CheckTextureFileValidity(source))
        return fail(source, noPicture());
    const std::wstring taken = TextureFolder + (L'\\' + hash);
    const QString target = system::JoinPath(m_manager.GetFavoriteLibraryPath(), taken);
    const bool isNew = !QFileInfo::exists(target);
    QString reason;
    if (!system::CopyWholeFile(source, target, MaxTextureBytes, reason))
        return fail(target, reason);
    if (isNew)
        m_added.append(target);
    texture.SetTextureFile(GStdStringTrans::WStringToString(taken));
    return true;
}

std::string CFavoriteStore::Digest(const CAppearanceInstancePtr& appearance) const
{
    const String text = CAppearanceParser(m_manager).AppearanceToString(appearance);
    return CMaterialHelper::HashBytes(text.data(), text.size());
}

bool CFavoriteStore::Contains(const std::string& id) const
{
    return QFileInfo::exists(documentFile(id));
}

bool CFavoriteStore::Write(const CAppearanceInstancePtr& appearance)
{
    const String text = CAppearanceParser(m_manager).AppearanceToString(appearance);
    const QString file = documentFile(appearance->GetId());
    QString reason;
    return system::WriteWholeFile(file, QByteArray::fromStdString(text), reason) || fail(file, reason);
}

bool CFavoriteStore::fail(const QString& file, const QString& reason)
{
    for (const QString& texture : m_added)
        QFile::remove(texture);
    m_added.clear();
    m_reason = QDir::toNativeSeparators(file) + QLatin1Char('\n') + reason;
    return false;
}

QString CFavoriteStore::documentFile(const std::string& id) const
{
    const std::string file = FAVORITE_LIBRARY_NAME + '\\' + id + ".json";
    return system::JoinPath(m_manager.GetFavoriteLibraryPath(), GStdStringTrans::StringToWString(file));
}

}  // namespace kiv
