#include "FavoriteLibrarySetUp.h"

#include <MaterialConstants.h>

#include <kiv/system/StoredPath.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRunnable>
#include <QThreadPool>
#include <QUuid>

namespace {

// The favourites' copy that the cloud fills.
const wchar_t* const CloudFolder = L"Favorite Library\\CloudLib";

constexpr int Few = 300;  // files that are removed within a frame
const QString AsidePrefix = QStringLiteral(".removed-");

bool isLarge(const QString& folder)
{
    QDirIterator walk(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    int count = 0;
    while (walk.hasNext() && count <= Few) {
        walk.next();
        ++count;
    }
    return count > Few;
}

// What was put aside, also by a process that ended too early to remove it.
void removeAside(const QString& root)
{
    const QDir dir(root);
    const auto which = QDir::Dirs | QDir::Hidden | QDir::NoSymLinks | QDir::NoDotAndDotDot;
    for (const QString& name : dir.entryList({AsidePrefix + '*'}, which)) {
        const QString path = dir.filePath(name);
        QThreadPool::globalInstance()->start(QRunnable::create([path] { QDir(path).removeRecursively(); }));
    }
}

// The dialog does not wait for thousands of files: the folder gets another name, and goes by and by.
void removeFolder(const QString& root, const QString& path)
{
    if (QFileInfo(path).isSymLink())
        QFile::remove(path);  // what it leads to is not ours
    else if (!isLarge(path) ||
             !QDir().rename(path, root + '/' + AsidePrefix + QUuid::createUuid().toString(QUuid::Id128)))
        QDir(path).removeRecursively();
    removeAside(root);
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
    if (!favorites.empty())
        removeFolder(kiv::system::NativePath(favorites), kiv::system::JoinPath(favorites, CloudFolder));
    manager.DeleteUserAppearanceLibrary(FAVORITE_LIBRARY_NAME);
    AddFavoriteLibrary(manager);
}
