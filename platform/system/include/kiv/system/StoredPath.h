#pragma once

#include <QString>

#include <string>

/// Stored paths (in documents, and those that cross the model's interface as wide text) may use "\" or "/" as
/// separator on every system and are kept as they stand. This is the one place that turns them into paths of the
/// machine. All functions are pure or ask the file system only; any thread.
namespace kiv::system {

/// The path of this machine for a stored path: every separator becomes the system's own and runs of separators
/// become one (a leading double separator of a Windows network path stays).
QString NativePath(const QString& stored);
QString NativePath(const std::wstring& stored);

/// The machine's path of `tail` below `base`, joined with exactly one separator. An empty base gives the tail.
QString JoinPath(const std::wstring& base, const std::wstring& tail);

/// True for a stored path that needs no folder to be found: a leading separator, or a drive letter with a colon.
bool IsAbsolutePath(const std::wstring& stored);

/// True when a segment of the stored path is "..": it could leave the folder that it is joined to.
bool ClimbsOut(const std::wstring& stored);

/// True for a name that stays in the folder it is joined to: not empty, not "." or "..", no separator, no colon.
bool IsPlainName(const std::wstring& name);

/// The stored path with "/" as separator, as archives and web addresses have it.
QString SlashedPath(const std::wstring& stored);

/// What follows the last separator of a stored path; the whole path when it has none.
std::wstring LastSegment(const std::wstring& stored);

/// True when `path` (of this machine) is an existing regular file; never opens it. Links are followed.
bool IsRegularFile(const QString& path);

/// The number of bytes of the regular file at `path`, or -1 when it is no regular file.
long long FileSize(const QString& path);

/// Reads a whole regular file. False with a reason in words when it is no regular file, larger than `maxBytes`, or
/// cannot be read; `bytes` is then unchanged. Blocking.
bool ReadWholeFile(const QString& path, long long maxBytes, QByteArray& bytes, QString& reason);

/// Copies the regular file `from` beside `to` and renames into place, block by block; otherwise as reading and writing.
bool CopyWholeFile(const QString& from, const QString& to, long long maxBytes, QString& reason);

/// Writes `bytes` beside `path` and renames into place, making missing folders; the old file stays whole on failure.
bool WriteWholeFile(const QString& path, const QByteArray& bytes, QString& reason);

}  // namespace kiv::system
