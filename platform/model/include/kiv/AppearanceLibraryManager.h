#pragma once

#include <kiv/AppearanceInstance.h>
#include <kiv/AppearanceLibrary.h>
#include <kiv/AppearanceTemplate.h>
#include <kiv/ParseError.h>

#include <map>
#include <memory>

namespace kiv {

class CAppearancePreviewer;
class CAppearanceTranslator;
class CLocalizedTexts;
class CStateSet;

/// Owner of all libraries, templates, display texts and paths. One per CMaterialLibrary. User-interface thread only,
/// but for ResolvePath and FindTemplate, which only read and may be called from anywhere while nothing is set.
class CAppearanceLibraryManager {
public:
    enum EnShaderLevelOfDetail { ShaderNone = 0, ShaderDefault = 1, ShaderFast = 2 };
    using LibraryMap = std::map<String, CAppearanceLibraryPtr>;

    /// Starts with an empty "System Library", no templates, no texts and empty paths.
    CAppearanceLibraryManager();
    ~CAppearanceLibraryManager();
    CAppearanceLibraryManager(const CAppearanceLibraryManager&) = delete;
    CAppearanceLibraryManager& operator=(const CAppearanceLibraryManager&) = delete;

    // ---- libraries

    /// All libraries, the system library included, in the order of their names.
    LibraryMap::const_iterator beginLibrary() const { return m_libraries.begin(); }
    LibraryMap::const_iterator endLibrary() const { return m_libraries.end(); }
    const CAppearanceLibraryPtr& GetSystemLibrary() const { return m_systemLibrary; }
    /// The user library of the name, or null; the system library is no user library.
    CAppearanceLibraryPtr FindUserAppearanceLibrary(const String& name) const;
    /// False for null, an empty name and a name that is taken. The name is read once, as for an appearance's id.
    bool AddUserAppearanceLibrary(const CAppearanceLibraryPtr& library);
    /// False when there is no user library of the name. Its appearances live as long as somebody holds them.
    bool DeleteUserAppearanceLibrary(const String& name);

    // ---- templates and instances

    /// The template of exactly this type name, or null.
    CAppearanceTemplatePtr FindTemplate(const String& typeName) const;
    /// Makes a template known; replaces one of the same name. Appearances made from the old one keep it.
    void AddTemplate(const CAppearanceTemplatePtr& appearanceTemplate);
    /// A new appearance of the template with a new id, belonging to no library. Null for a null template.
    CAppearanceInstancePtr CreateAppearanceInstance(const CAppearanceTemplatePtr& appearanceTemplate,
                                                    const String& name) const;
    /// What turns appearances into the render state, for more than one of them; null for null.
    std::shared_ptr<CAppearanceTranslator> CreateTranslator(CStateSet* stateSet) const;
    /// Fills the render state from the appearance, at the level of detail set below (see kiv/AppearanceTranslator.h).
    /// False, changing nothing, when one of them is null.
    bool Translate(const CAppearanceInstancePtr& appearance, CStateSet* stateSet) const;
    /// Hands the flat preview to the previewer: the resolved file of the first texture named by the template's preview
    /// keys that is in use ("useBaseTexture"; a type without that switch always uses its texture) and names a file,
    /// otherwise the first colour. False, calling nothing, for null.
    bool Preview(const CAppearanceInstancePtr& appearance, CAppearancePreviewer& previewer) const;

    // ---- user-interface support

    /// Walks the panel description of the template for the builder. The name may be a category path: its segments are
    /// tried from the last to the first, and a name without any description gets the one of "Generic".
    /// False when the builder refused an element or there is no description at all.
    bool BuildUI(const String& templateName, CAppearanceUIBuilder& builder) const;
    /// Display text of a stored appearance name, category or library name. An unknown text is answered as it is.
    String LocalizeAppearanceString(const String& text) const;
    /// Display text of a label, group title, tool tip or unit of a panel. An unknown text is answered as it is.
    String LocalizeUiString(const String& text) const;
    /// "zh" (the default) or "en"; another language shows every text as it is stored.
    void SetLanguage(const String& language);
    const String& GetLanguage() const;
    /// Reads a text file: {"language":"zh","appearance":{stored:shown},"ui":{stored:shown}}. Adds to what is known.
    /// False with the reason, changing nothing.
    bool LoadTexts(const std::wstring& path, CParseError& error);

    // ---- paths (stored form; see kiv/system/StoredPath.h)

    const std::wstring& GetLibraryPath() const { return m_libraryPath; }
    const std::wstring& GetTextureLibraryPath() const { return m_textureLibraryPath; }
    const std::wstring& GetFavoriteLibraryPath() const { return m_favoriteLibraryPath; }
    const std::wstring& GetFavoriteLibraryTexturePath() const { return m_favoriteLibraryTexturePath; }
    void SetLibraryPath(const std::wstring& path) { m_libraryPath = path; }
    void SetTextureLibraryPath(const std::wstring& path) { m_textureLibraryPath = path; }
    void SetFavoriteLibraryPath(const std::wstring& path) { m_favoriteLibraryPath = path; }
    void SetFavoriteLibraryTexturePath(const std::wstring& path) { m_favoriteLibraryTexturePath = path; }

    /// The absolute path on this machine of a stored texture path. An absolute path is itself; a relative one is looked
    /// for under the texture library path, the favourite texture path and the favourite library path, in this order.
    /// What is found nowhere is answered under the texture library path. Empty for an empty path, for a relative path
    /// with a segment "..", which could leave these folders, and for one that is found nowhere while there is no
    /// texture library path. Asks the file system only whether regular files exist.
    std::wstring ResolvePath(const std::wstring& texturePath) const;
    String ResolvePath(const String& texturePath) const;

    /// Unit of texture sizes, "m" by default.
    const String& GetTextureUnit() const { return m_textureUnit; }
    void SetTextureUnit(const String& unit) { m_textureUnit = unit; }

    // ---- rendering switches, read by the translation

    void UsePreEnvironmentMap(bool use) { m_usePreEnvironmentMap = use; }
    bool IsUsingPreEnvironmentMap() const { return m_usePreEnvironmentMap; }
    EnShaderLevelOfDetail GetShaderLevelOfDetail() const { return m_shaderLevelOfDetail; }
    void SetShaderLevelOfDetail(EnShaderLevelOfDetail level) { m_shaderLevelOfDetail = level; }

private:
    LibraryMap m_libraries;
    CAppearanceLibraryPtr m_systemLibrary;
    std::map<String, CAppearanceTemplatePtr> m_templates;
    std::unique_ptr<CLocalizedTexts> m_texts;
    std::wstring m_libraryPath;
    std::wstring m_textureLibraryPath;
    std::wstring m_favoriteLibraryPath;
    std::wstring m_favoriteLibraryTexturePath;
    String m_textureUnit = "m";
    bool m_usePreEnvironmentMap = false;
    EnShaderLevelOfDetail m_shaderLevelOfDetail = ShaderDefault;
};

}  // namespace kiv
