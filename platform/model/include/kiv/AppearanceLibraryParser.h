#pragma once

#include <kiv/AppearanceLibraryManager.h>

namespace kiv {

/// Reads library files and the library's configuration. User-interface thread.
class CAppearanceLibraryParser {
public:
    explicit CAppearanceLibraryParser(CAppearanceLibraryManager& manager) : m_manager(manager) {}

    /// Adds the appearances of a library file, {"appearances":[document, ...]}, to the library. A document that is
    /// refused and an id that occurs twice are skipped and reported; the rest is there. False, adding nothing, when
    /// the file cannot be read, is larger than 1 GiB or is no such JSON. A library without name or identifier takes the
    /// file's "name" or "id".
    bool AppearanceLibraryFromFile(const CAppearanceLibraryPtr& library, const std::wstring& path);
    /// The same for text in memory; `place` names it in the report.
    bool AppearanceLibraryFromString(const CAppearanceLibraryPtr& library, const String& text, const String& place);

    /// Reads the configuration ("library.json" when the path is a folder): {"textureUnit":"m"}. False when it is
    /// missing or no such JSON; the manager is then unchanged.
    bool ConfigLibrayFromFile(const std::wstring& path);

    /// What the calls so far skipped or refused.
    const CParseReport& GetReport() const { return m_report; }

private:
    CAppearanceLibraryManager& m_manager;
    CParseReport m_report;
};

}  // namespace kiv
