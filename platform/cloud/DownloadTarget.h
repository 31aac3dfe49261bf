#pragma once

#include <QSaveFile>

namespace nuvs {

/// Makes the folder of a machine's path; false when no regular file can lie there.
bool MakeRoomFor(const QString& path);

/// Removes what was written so far, at once.
void Discard(QSaveFile& file);

}  // namespace nuvs
