#include "FavoriteStore.h"

#include "AppearanceTextures.h"
#include "MaterialConstants.h"
#include "MaterialHelper.h"

#include <glenox/StdStringTrans.h>
#include <kiv/AppearanceParser.h>
#include <kiv/AppearanceTextureHelper.h>
#include <kiv/system/StoredPath.h>

#include <QFileInfo>

#include <algorithm>

namespace kiv {

namespace {

const wchar_t* const TextureFolder = L"UserLib Textures";

}  // namespace

bool CFavoriteStore::TakeTextures(const CAppearanceInstance& appearance) const
{
    const auto textures = FindTextures(appearance);
    return std::all_of(textures.begin(), textures.end(), [this](const auto& texture) { return takeTexture(*texture); });
}

bool CFavoriteStore::takeTexture(CAppearanceInstance& texture) const
{
    const std::wstring source = GStdStringTrans::StringToWString(texture.GetTextureFile());
    const CAppearanceTextureHelper helper(m_manager);
    const std::wstring hash = GStdStringTrans::StringToWString(helper.ParserTextureFileToSha(source));
    const QString folder = system::JoinPath(m_manager.GetFavoriteLibraryPath(), TextureFolder);
    if (hash.empty() || !helper.CopyTextureToPathAndRename(source, folder.toStdWString(), hash, true))
        return false;
    texture.SetTextureFile(GStdStringTrans::WStringToString(TextureFolder + (L'\\' + hash)));
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

bool CFavoriteStore::Write(const CAppearanceInstancePtr& appearance) const
{
    const String text = CAppearanceParser(m_manager).AppearanceToString(appearance);
    QString reason;
    return system::WriteWholeFile(documentFile(appearance->GetId()), QByteArray::fromStdString(text), reason);
}

QString CFavoriteStore::documentFile(const std::string& id) const
{
    const std::string file = FAVORITE_LIBRARY_NAME + '\\' + id + ".json";
    return system::JoinPath(m_manager.GetFavoriteLibraryPath(), GStdStringTrans::StringToWString(file));
}

}  // namespace kiv
