#include <kiv/AppearanceTranslator.h>

#include <kiv/AppearanceLibraryManager.h>

#include <glenox/StdStringTrans.h>

#include <algorithm>
#include <type_traits>

namespace kiv {

namespace {

struct CUnit {
    const char* id;
    const char* sampler;
    bool isColor;
};

constexpr CUnit Units[] = {{"textureUnit0", "baseTexture", true}, {"textureUnit1", "bumpTexture", false}};

EnTextureWrap wrapOf(const CAppearanceInstance& texture, const char* key)
{
    const int mode = texture.ValueOr<int>(key, 0);
    return mode >= 0 && mode <= 2 ? static_cast<EnTextureWrap>(mode) : EnTextureWrap::Repeat;
}

/// The value of "roughness", or of "diffuse_texture:transform" in the texture that the first part names.
CPropertyValuePtr valueAt(const CAppearanceInstance& appearance, const String& path)
{
    const std::size_t colon = path.find(':');
    if (colon == String::npos)
        return appearance.FindProperty(path);
    const CPropertyValuePtr holder = appearance.FindProperty(path.substr(0, colon));
    const auto* texture = holder ? holder->TryGet<CAppearanceInstancePtr>() : nullptr;
    return texture && *texture ? (*texture)->FindProperty(path.substr(colon + 1)) : nullptr;
}

void setUniform(CStateSet& stateSet, const String& name, const CPropertyValue& value)
{
    value.Visit([&](const auto& held) {
        if constexpr (std::is_constructible_v<CStateSet::Uniform, decltype(held)> &&
                      !std::is_same_v<std::decay_t<decltype(held)>, std::monostate>)
            stateSet.SetUniform(name, held);
    });
}

}  // namespace

CAppearanceTranslator::CAppearanceTranslator(const CAppearanceLibraryManager& manager, CStateSet* stateSet)
    : m_manager(manager), m_stateSet(stateSet)
{
}

bool CAppearanceTranslator::Translate(const CAppearanceInstancePtr& appearance)
{
    if (!appearance || !m_stateSet)
        return false;
    const CAppearanceTemplatePtr own = appearance->GetTemplate();
    const CAppearanceTemplatePtr used = own ? own : m_manager.FindTemplate("Generic");
    const auto level = m_manager.GetShaderLevelOfDetail();
    m_stateSet->Clear();
    m_stateSet->SetShading(static_cast<EnShading>(level));
    m_stateSet->SetUsePreEnvironmentMap(m_manager.IsUsingPreEnvironmentMap());
    if (!used)
        return true;
    const bool isFast = level == CAppearanceLibraryManager::ShaderFast;
    m_stateSet->SetShaderParts(isFast ? used->GetFastShaderParts() : used->GetShaderParts());
    bindUniforms(*appearance, used->GetVertexBindings());
    bindUniforms(*appearance, used->GetFragmentBindings());
    bindTextures(*appearance, *used);
    m_stateSet->SetTransparent(m_stateSet->Get("alpha", 1.0F) < 1);
    return true;
}

void CAppearanceTranslator::bindUniforms(const CAppearanceInstance& appearance,
                                         const std::map<String, String>& bindings)
{
    for (const auto& binding : bindings) {
        if (const CPropertyValuePtr value = valueAt(appearance, binding.first))
            setUniform(*m_stateSet, binding.second, *value);
    }
}

// Which unit a texture belongs to, the template's prototype tells: documents leave it out.
void CAppearanceTranslator::bindTextures(const CAppearanceInstance& appearance,
                                         const CAppearanceTemplate& appearanceTemplate)
{
    for (const CTemplateParameter& parameter : appearanceTemplate.GetParameters()) {
        if (parameter.type != EnParameterType::Texture)
            continue;
        const auto* prototype = parameter.defaultValue->TryGet<CAppearanceInstancePtr>();
        const CPropertyValuePtr value = appearance.FindProperty(parameter.key);
        const auto* texture = value ? value->TryGet<CAppearanceInstancePtr>() : nullptr;
        if (!prototype || !*prototype || !texture || !*texture)
            continue;
        const std::wstring file = m_manager.ResolvePath(GStdStringTrans::StringToWString((*texture)->GetTextureFile()));
        const auto* unit = std::find_if(std::begin(Units), std::end(Units),
                                        [&](const CUnit& u) { return (*prototype)->GetId() == u.id; });
        if (unit != std::end(Units) && !file.empty())
            m_stateSet->SetTexture(unit->sampler,
                                   {file, wrapOf(**texture, "repeat_h"), wrapOf(**texture, "repeat_v"), unit->isColor});
    }
}

}  // namespace kiv
