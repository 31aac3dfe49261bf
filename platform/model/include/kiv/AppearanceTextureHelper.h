#pragma once

#include <kiv/Types.h>

namespace kiv {

/// Copies texture files. Paths in stored form; relative sources are resolved by the manager. A source that is no
/// regular file (a folder, a device) or is larger than 2 GiB is refused. Blocking.
class CAppearanceTextureHelper {
public:
    explicit CAppearanceTextureHelper(const CAppearanceLibraryManager& manager) : m_manager(manager) {}

    /// Copies the file into the folder (made when missing) under its own name. The copy appears whole or not at all.
    /// An existing file of the name is replaced when `overwrite`, otherwise kept, which counts as success.
    bool CopyTextureToPath(const std::wstring& source, const std::wstring& targetFolder, bool overwrite) const;
    /// The same under another name; the name may not contain separators.
    bool CopyTextureToPathAndRename(const std::wstring& source, const std::wstring& targetFolder,
                                    const std::wstring& newName, bool overwrite) const;
    /// The content hash under which a texture is stored: SHA-1, 40 lower-case hexadecimal digits, no suffix. Empty when
    /// the file cannot be read.
    String ParserTextureFileToSha(const std::wstring& path) const;

private:
    const CAppearanceLibraryManager& m_manager;
};

}  // namespace kiv
