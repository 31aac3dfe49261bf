#include "FavoriteTexturePaths.h"

#include <AppearanceTextures.h>
#include <MaterialConstants.h>

#include <glenox/StdStringTrans.h>
#include <kiv/system/StoredPath.h>

#include <QFileInfo>

using kiv::GStdStringTrans;

namespace {

// The file and the folder that it lies in, with the separator before that folder; a shorter path is kept whole.
std::wstring lastTwoSegments(const std::wstring& path)
{
    const std::size_t last = path.find_last_of(L"/\\");
    if (last == std::wstring::npos || last == 0)
        return path;
    const std::size_t second = path.find_last_of(L"/\\", last - 1);
    return second == std::wstring::npos ? path : path.substr(second);
}

}  // namespace

CFavoriteTexturePaths::CFavoriteTexturePaths(const kiv::CAppearanceLibraryManager& manager)
    : m_root(manager.GetFavoriteLibraryPath() + L'\\' + GStdStringTrans::StringToWString(FAVORITE_LIBRARY_NAME) + L'\\')
{
}

void CFavoriteTexturePaths::Reroot(const kiv::CAppearanceInstance& appearance)
{
    for (const kiv::CAppearanceInstancePtr& texture : kiv::FindTextures(appearance)) {
        const std::wstring tail = lastTwoSegments(GStdStringTrans::StringToWString(texture->GetTextureFile()));
        if (kiv::system::ClimbsOut(tail))
            continue;
        // A tail that begins with its separator doubles it here; the path is stored so and means the same.
        const std::wstring candidate = m_root + tail;
        if (exists(kiv::system::NativePath(candidate)))
            texture->SetTextureFile(GStdStringTrans::WStringToString(candidate));
    }
}

// Most textures of a large library lie in a few folders that are not there.
bool CFavoriteTexturePaths::exists(const QString& file)
{
    const QString folder = QFileInfo(file).path();
    auto known = m_folders.constFind(folder);
    if (known == m_folders.cend())
        known = m_folders.insert(folder, QFileInfo(folder).isDir());
    return *known && kiv::system::IsRegularFile(file);
}
