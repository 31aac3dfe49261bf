#pragma once

#include <QString>
#include <QStringList>

/// Names and identifiers of the storage. An identifier is the path below the application-data root, its names joined
/// with "/"; the empty text is the root. Pure.
namespace nuvs {

/// True for a name that a file or folder of a user may have: plain, without control characters, of at most 255 bytes,
/// and no session mark.
bool IsRemoteName(const QString& name);

/// True when every part of the identifier is such a name, or it is the root's.
bool IsRemoteId(const QString& id);

QStringList NamesOf(const QString& id);
QString ChildId(const QString& folder, const QString& name);

/// A new session's mark: a folder of the root, in which uploads wait until they are whole.
QString NewMarkName();
bool IsMarkName(const QString& name);
/// The name under which an upload waits in the mark.
QString NewStagingName();

}  // namespace nuvs
