#pragma once

#include <kiv/AppearanceInstance.h>
#include <kiv/ParseError.h>

#include <memory>

namespace kiv {

class CAppearanceLibraryManager;

/// Reads and writes appearance documents (UTF-8 JSON, docs/formats.md) and ".ggm" archives.
///
/// Writing is deterministic: the same appearance gives the same bytes on every machine (keys in byte order, no blanks,
/// the shortest number that reads back to the same float, always with a point or an exponent; a float that is not
/// finite is written as null). Reading what was written gives an equal appearance.
///
/// Reading checks every value against the type that the appearance's template declares ("Generic" for a template that
/// nobody knows). null means the default. A document is read whole or refused whole, with the reason in GetLastError().
/// Limits: a document 16 MiB and 32 levels deep; an archive 512 members and 256 MiB unpacked.
///
/// Keep one parser for many documents: it reuses its buffers. One thread at a time; the manager's templates must not
/// change meanwhile.
class CAppearanceParser {
public:
    explicit CAppearanceParser(const CAppearanceLibraryManager& manager);
    ~CAppearanceParser();

    /// Null when the document is refused or the file cannot be read.
    CAppearanceInstancePtr AppearanceFromFile(const std::wstring& path);
    CAppearanceInstancePtr AppearanceFromString(const String& text);

    /// Reads the archive's document and unpacks its textures below the favourite library path, as
    /// "UserLib Textures\<content hash>", to which the texture files then refer. Members other than the document and
    /// the textures that it names are not unpacked. On refusal no file is left behind.
    CAppearanceInstancePtr AppearanceFromZipFile(const std::wstring& path);

    /// Writes the document and every texture file that can be found; a texture that cannot keeps its stored path.
    /// Beside the path and renamed: the old file stays whole on failure.
    bool AppearanceToZipFile(const CAppearanceInstancePtr& appearance, const std::wstring& path);

    /// The document's text; empty for null.
    String AppearanceToString(const CAppearanceInstancePtr& appearance) const;
    /// The same bytes, not null-terminated, and their number; null and 0 for null.
    std::unique_ptr<char[]> AppearanceToBytes(const CAppearanceInstancePtr& appearance, std::size_t& size) const;

    /// Why the last reading or archive operation failed; empty after a success.
    const CParseError& GetLastError() const;

private:
    struct Private;
    std::unique_ptr<Private> m;
};

}  // namespace kiv
