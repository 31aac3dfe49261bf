#include "FavoriteLibrarySetUp.h"

#include <MaterialConstants.h>

#include <kiv/system/StoredPath.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

// The favourites' copy that the cloud fills.
QString cloudFolder(const kiv::CAppearanceLibraryManager& manager)
{
    const std::wstring& favorites = manager.GetFavoriteLibraryPath();
    return favorites.empty() ? QString() : kiv::system::JoinPath(favorites, L"Favorite Library\\CloudLib");
}

void removeFolder(const QString& path)
{
    if (path.isEmpty())
        return;
    // A link is taken away itself: what it leads to is not ours.
    if (QFileInfo(path).isSymLink())
        QFile::remove(path);
    else
        QDir(path).removeRecursively();
}

}  // namespace

kiv::CAppearanceLibraryPtr AddFavoriteLibrary(kiv::CAppearanceLibraryManager& manager)
{
    const auto library = std::make_shared<kiv::CAppearanceLibrary>();
    library->SetId(FAVORITE_LIBRARY_NAME);
    library->SetName(FAVORITE_LIBRARY_NAME);
    manager.AddUserAppearanceLibrary(library);
    return library;
}

void SetUpFavoriteLibrary(kiv::CAppearanceLibraryManager& manager)
{
    const std::wstring& favorites = manager.GetFavoriteLibraryPath();
    manager.SetFavoriteLibraryTexturePath(favorites.empty() ? favorites : favorites + L"\\Favorite Texture");
    removeFolder(cloudFolder(manager));
    manager.DeleteUserAppearanceLibrary(FAVORITE_LIBRARY_NAME);
    AddFavoriteLibrary(manager);
}
