#include <kiv/AppearanceLibraryManager.h>

#include "LocalizedTexts.h"
#include "UiWalk.h"

#include <glenox/StdStringTrans.h>
#include <kiv/AppearancePreviewer.h>
#include <kiv/AppearanceTranslator.h>
#include <kiv/MaterialLibrary.h>
#include <kiv/system/StoredPath.h>

#include <algorithm>

namespace kiv {

namespace {

const char* const SystemLibraryName = "System Library";
const char* const FallbackTemplateName = "Generic";

const std::vector<String>& previewKeys(const CAppearanceInstance& appearance)
{
    static const std::vector<String> usual{"diffuse_texture", "diffuse_color"};
    const auto& appearanceTemplate = appearance.GetTemplate();
    return appearanceTemplate && !appearanceTemplate->GetPreviewKeys().empty() ? appearanceTemplate->GetPreviewKeys()
                                                                               : usual;
}

/// A type without the switch always shows its texture.
String textureInUse(const CAppearanceInstance& appearance)
{
    if (!appearance.ValueOr("useBaseTexture", true))
        return {};
    for (const String& key : previewKeys(appearance)) {
        const auto texture = appearance.ValueOr<CAppearanceInstancePtr>(key, {});
        if (texture && !texture->GetTextureFile().empty())
            return texture->GetTextureFile();
    }
    return {};
}

CVec4<float> previewColor(const CAppearanceInstance& appearance)
{
    CVec4<float> color = appearance.GetDiffuse();
    for (const String& key : previewKeys(appearance)) {
        const auto value = appearance.FindProperty(key);
        if (const auto* found = value ? value->TryGet<CVec4<float>>() : nullptr) {
            color = *found;
            break;
        }
    }
    for (std::size_t i = 0; i < 4; ++i)
        color[i] = color[i] > 0 ? std::min(color[i], 1.0f) : 0.0f;  // not a number becomes 0
    return color;
}

/// The segments of a category path from the last to the first, then the fallback.
std::vector<String> templateCandidates(String path)
{
    std::vector<String> names;
    for (auto separator = path.rfind('/'); separator != String::npos; separator = path.rfind('/')) {
        names.push_back(path.substr(separator + 1));
        path.resize(separator);
    }
    names.push_back(path);
    names.push_back(FallbackTemplateName);
    return names;
}

}  // namespace

CAppearanceLibraryManager::CAppearanceLibraryManager()
    : m_systemLibrary(std::make_shared<CAppearanceLibrary>()), m_texts(std::make_unique<CLocalizedTexts>())
{
    m_systemLibrary->SetName(SystemLibraryName);
    m_systemLibrary->SetId(SystemLibraryName);
    m_libraries.emplace(SystemLibraryName, m_systemLibrary);
}

CAppearanceLibraryManager::~CAppearanceLibraryManager() = default;

CAppearanceLibraryPtr CAppearanceLibraryManager::FindUserAppearanceLibrary(const String& name) const
{
    const auto found = m_libraries.find(name);
    return found == m_libraries.end() || found->second == m_systemLibrary ? nullptr : found->second;
}

bool CAppearanceLibraryManager::AddUserAppearanceLibrary(const CAppearanceLibraryPtr& library)
{
    return library && !library->GetName().empty() && m_libraries.emplace(library->GetName(), library).second;
}

bool CAppearanceLibraryManager::DeleteUserAppearanceLibrary(const String& name)
{
    return FindUserAppearanceLibrary(name) && m_libraries.erase(name) != 0;
}

CAppearanceTemplatePtr CAppearanceLibraryManager::FindTemplate(const String& typeName) const
{
    const auto found = m_templates.find(typeName);
    return found == m_templates.end() ? nullptr : found->second;
}

void CAppearanceLibraryManager::AddTemplate(const CAppearanceTemplatePtr& appearanceTemplate)
{
    if (appearanceTemplate)
        m_templates[appearanceTemplate->GetName()] = appearanceTemplate;
}

CAppearanceInstancePtr
CAppearanceLibraryManager::CreateAppearanceInstance(const CAppearanceTemplatePtr& appearanceTemplate,
                                                    const String& name) const
{
    if (!appearanceTemplate)
        return {};
    auto appearance = std::make_shared<CAppearanceInstance>(appearanceTemplate);
    appearance->SetId(CMaterialLibrary::newGUID());
    appearance->SetName(name);
    return appearance;
}

std::shared_ptr<CAppearanceTranslator> CAppearanceLibraryManager::CreateTranslator(CStateSet* stateSet) const
{
    return stateSet ? std::make_shared<CAppearanceTranslator>(*this, stateSet) : nullptr;
}

bool CAppearanceLibraryManager::Translate(const CAppearanceInstancePtr& appearance, CStateSet* stateSet) const
{
    return stateSet && CAppearanceTranslator(*this, stateSet).Translate(appearance);
}

bool CAppearanceLibraryManager::Preview(const CAppearanceInstancePtr& appearance, CAppearancePreviewer& previewer) const
{
    if (!appearance)
        return false;
    const String file = ResolvePath(textureInUse(*appearance));
    if (file.empty())
        previewer.Preview(previewColor(*appearance));
    else
        previewer.Preview(file);
    return true;
}

bool CAppearanceLibraryManager::BuildUI(const String& templateName, CAppearanceUIBuilder& builder) const
{
    for (const String& name : templateCandidates(templateName)) {
        const auto appearanceTemplate = FindTemplate(name);
        if (appearanceTemplate && !appearanceTemplate->GetUi().empty())
            return WalkUi(appearanceTemplate->GetUi(), builder);
    }
    return false;
}

String CAppearanceLibraryManager::LocalizeAppearanceString(const String& text) const
{
    return m_texts->Appearance(text);
}

String CAppearanceLibraryManager::LocalizeUiString(const String& text) const
{
    return m_texts->Ui(text);
}

void CAppearanceLibraryManager::SetLanguage(const String& language)
{
    m_texts->SetLanguage(language);
}

const String& CAppearanceLibraryManager::GetLanguage() const
{
    return m_texts->GetLanguage();
}

bool CAppearanceLibraryManager::LoadTexts(const std::wstring& path, CParseError& error)
{
    return m_texts->Load(path, error);
}

std::wstring CAppearanceLibraryManager::ResolvePath(const std::wstring& texturePath) const
{
    if (texturePath.empty() || system::IsAbsolutePath(texturePath))
        return system::NativePath(texturePath).toStdWString();
    if (system::ClimbsOut(texturePath))
        return {};
    for (const std::wstring* folder : {&m_textureLibraryPath, &m_favoriteLibraryTexturePath, &m_favoriteLibraryPath}) {
        const QString path = system::JoinPath(*folder, texturePath);
        if (!folder->empty() && system::IsRegularFile(path))
            return path.toStdWString();
    }
    return m_textureLibraryPath.empty() ? std::wstring()
                                        : system::JoinPath(m_textureLibraryPath, texturePath).toStdWString();
}

String CAppearanceLibraryManager::ResolvePath(const String& texturePath) const
{
    return GStdStringTrans::WStringToString(ResolvePath(GStdStringTrans::StringToWString(texturePath)));
}

}  // namespace kiv
