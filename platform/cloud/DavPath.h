#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

namespace nuvs {

/// The address of what lies below a folder's address, with "/" at its end for a folder.
QUrl FileUrl(const QUrl& folder, const QStringList& names);
QUrl FolderUrl(const QUrl& folder, const QStringList& names);

enum class EPlace { Itself, Child, Elsewhere };

/// Where a reference of a listing points, seen from the folder that was listed, and the child's name. A reference to
/// another host, or out of the folder, points elsewhere.
EPlace PlaceOf(const QString& reference, const QUrl& folder, QString& name);

}  // namespace nuvs
