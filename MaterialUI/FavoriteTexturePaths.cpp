#include "FavoriteTexturePaths.h"

#include <AppearanceTextures.h>
#include <MaterialConstants.h>

#include <kiv/system/StoredPath.h>

#include <QDir>

namespace {

// The last separator before the position, -1 when there is none.
int separatorBefore(const QString& path, int position)
{
    while (--position >= 0 && path[position] != QLatin1Char('/') && path[position] != QLatin1Char('\\')) {
    }
    return position;
}

// The file and the folder that it lies in, with the separator before that folder; a shorter path is kept whole.
QString lastTwoSegments(const QString& path)
{
    const int last = separatorBefore(path, path.size());
    const int second = last > 0 ? separatorBefore(path, last) : -1;
    return second < 0 ? path : path.mid(second);
}

}  // namespace

CFavoriteTexturePaths::CFavoriteTexturePaths(const kiv::CAppearanceLibraryManager& manager)
    : m_root(QString::fromStdWString(manager.GetFavoriteLibraryPath()) + QLatin1Char('\\') +
             QString::fromStdString(FAVORITE_LIBRARY_NAME) + QLatin1Char('\\'))
{
}

// A tail that begins with its separator doubles it behind the root; the path is stored so and means the same.
void CFavoriteTexturePaths::Reroot(const kiv::CAppearanceInstance& appearance)
{
    for (const kiv::CAppearanceInstancePtr& texture : kiv::FindTextures(appearance)) {
        const QString tail = lastTwoSegments(QString::fromLocal8Bit(texture->GetTextureFile().c_str()));
        if (exists(tail))
            texture->SetTextureFile((m_root + tail).toLocal8Bit().toStdString());
    }
}

// Most textures are not there, and thousands of questions to the file system would cost more than reading the
// favourites. The names only rule out: whether case matters is up to the file system.
bool CFavoriteTexturePaths::exists(const QString& tail)
{
    const int nameStart = separatorBefore(tail, tail.size()) + 1;
    return namesIn(tail.left(nameStart)).contains(tail.mid(nameStart).toCaseFolded()) &&
           kiv::system::IsRegularFile(kiv::system::NativePath(m_root + tail));
}

const QSet<QString>& CFavoriteTexturePaths::namesIn(const QString& folder)
{
    const auto known = m_names.constFind(folder);
    if (known != m_names.cend())
        return *known;
    QSet<QString> names;
    if (!kiv::system::ClimbsOut(folder.toStdWString())) {
        const QDir dir(kiv::system::NativePath(m_root + folder));
        for (const QString& name : dir.entryList(QDir::Files | QDir::Hidden, QDir::Unsorted))
            names.insert(name.toCaseFolded());
    }
    return *m_names.insert(folder, names);
}
