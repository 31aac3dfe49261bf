#include "DownloadTarget.h"

#include <kiv/system/StoredPath.h>

#include <QDir>
#include <QFileInfo>

namespace nuvs {

bool MakeRoomFor(const QString& path)
{
    if (path.isEmpty() || (QFileInfo::exists(path) && !kiv::system::IsRegularFile(path)))
        return false;
    return QDir().mkpath(QFileInfo(path).absolutePath());
}

void Discard(QSaveFile& file)
{
    file.cancelWriting();
    if (file.isOpen())
        file.commit();
}

}  // namespace nuvs
