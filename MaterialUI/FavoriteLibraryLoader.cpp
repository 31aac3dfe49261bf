#include "FavoriteLibraryLoader.h"

#include "FavoriteTexturePaths.h"
#include "LoadingProgress.h"

#include <kiv/AppearanceParser.h>

#include <QDirIterator>

#include <algorithm>

namespace {

const QLatin1String ArchiveSuffix(".ggm");
const QLatin1String DocumentSuffix(".json");

// By name, so that it does not depend on the disk which of two files with the same id is taken. The suffixes are
// compared as they stand, also where the file system would not tell ".JSON" from ".json".
QStringList favoriteFiles(const QString& folder)
{
    QStringList files;
    QDirIterator walk(folder, QDir::Files | QDir::Hidden);
    while (walk.hasNext()) {
        const QString file = walk.next();
        if (file.endsWith(ArchiveSuffix) || file.endsWith(DocumentSuffix))
            files.append(file);
    }
    std::sort(files.begin(), files.end());
    return files;
}

}  // namespace

bool CFavoriteLibraryLoader::Load(const QString& folder, kiv::CAppearanceLibrary& library)
{
    const QStringList files = favoriteFiles(folder);
    if (files.isEmpty())
        return true;
    CLoadingProgress progress(m_owner, tr("请稍等"), tr("正在载入我的材质......"), tr("取消"), files.size());
    CFavoriteTexturePaths paths(m_manager);
    kiv::CAppearanceParser parser(m_manager);
    bool isWhole = true;
    for (const QString& file : files) {
        if (progress.IsOver())
            return false;
        const std::wstring path = file.toStdWString();
        const auto appearance =
            file.endsWith(ArchiveSuffix) ? parser.AppearanceFromZipFile(path) : parser.AppearanceFromFile(path);
        isWhole = isWhole && appearance;
        if (appearance) {
            paths.Reroot(*appearance);
            library.AddInstance(appearance);
        }
        progress.Advance();
    }
    return isWhole;
}
