#pragma once

#include <kiv/AppearanceLibraryManager.h>

namespace kiv {

/// Where a material library finds things (stored form, absolute).
struct CMaterialLibraryPaths {
    /// Root with "library.json", "templates", "texts" and a folder for each delivered library ("System Library").
    std::wstring library;
    std::wstring textures;   ///< the delivered textures and the sky box
    std::wstring favorites;  ///< the user's folder; empty when the user has none
};

/// The model as the host opens it. The host makes one, opens it, and hands it to the widgets, which borrow it: it must
/// outlive them. User-interface thread only.
class CMaterialLibrary {
public:
    /// Knows nothing yet but an empty "System Library" and an empty "Customer Library".
    CMaterialLibrary();
    ~CMaterialLibrary();
    CMaterialLibrary(const CMaterialLibrary&) = delete;
    CMaterialLibrary& operator=(const CMaterialLibrary&) = delete;

    /// Reads configuration, texts, templates and the system library below the paths. True when at least one template
    /// and the system library's folder could be read; what was skipped on the way stands in GetReport() either way,
    /// and the rest is there. Blocking; meant to be called once, before any widget is made.
    bool Open(const CMaterialLibraryPaths& paths);
    const CParseReport& GetReport() const { return m_report; }

    CAppearanceLibraryManager* GetMaterialManager() { return &m_manager; }

    /// A new appearance of the template with a new id, belonging to no library, edit type 1 and the type as category.
    /// Null for a name that is no template.
    CAppearanceInstancePtr CreateMaterial(const String& templateName, const std::wstring& name);
    /// The same with an empty name; a name that is no template ("Ceiling", "Other") gives a "Generic" appearance whose
    /// category is the name. Null only when there is no "Generic" either.
    CAppearanceInstancePtr CreateMaterialInstance(const String& templateName);
    /// A deep copy with edit type 1, added to "Customer Library" (made when missing); textures are shared by file.
    /// The new name is what the copy is kept under: 32 hexadecimal digits, in braces and with hyphens or not, become
    /// its identifier, and it keeps the display name of the original; any other text becomes its display name, and
    /// it gets a new identifier. Null for null and for an identifier that is taken.
    CAppearanceInstancePtr CopyMaterial(const CAppearanceInstancePtr& appearance, const std::wstring& newName);

    /// A new identifier: 32 lower-case hexadecimal digits. Any thread.
    static String newGUID();

    /// The unit of texture sizes, from the library's configuration.
    String GetTextureUnit() const { return m_manager.GetTextureUnit(); }

private:
    CAppearanceLibraryManager m_manager;
    CParseReport m_report;
};

}  // namespace kiv
