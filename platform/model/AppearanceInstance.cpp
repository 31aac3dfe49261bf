#include <kiv/AppearanceInstance.h>

#include <kiv/AppearanceTemplate.h>

#include <algorithm>

namespace kiv {

namespace {

const char* const TextureTemplateName = "Texture";
const char* const IdentityKeys[] = {"id", "name", "category", "edit_type"};

bool isIdentity(const String& key)
{
    return std::find(std::begin(IdentityKeys), std::end(IdentityKeys), key) != std::end(IdentityKeys);
}

const CTemplateParameter* declaration(const CAppearanceTemplatePtr& appearanceTemplate, const String& key)
{
    return appearanceTemplate ? appearanceTemplate->FindParameter(key) : nullptr;
}

CAppearanceInstancePtr subAppearance(const CPropertySet& properties, const String& key)
{
    return properties.ValueOr<CAppearanceInstancePtr>(key, {});
}

/// The value itself, or a value of its own for a sub-appearance, which two appearances must not share.
CPropertyValuePtr ownValue(const CPropertyValuePtr& value)
{
    const auto* sub = value->TryGet<CAppearanceInstancePtr>();
    if (!sub || !*sub)
        return value;
    auto copy = std::make_shared<CAppearanceInstance>();
    copy->Assign(**sub);
    return MakePropertyValue(std::move(copy));
}

/// Whether an appearance of the template may take this property of an appearance of another template.
bool fits(const CAppearanceTemplatePtr& own, const CAppearanceTemplatePtr& others, const String& key,
          const CPropertyValue& value)
{
    if (const auto* parameter = declaration(own, key))
        return parameter->defaultValue->GetType() == value.GetType();
    return !declaration(others, key);
}

}  // namespace

CAppearanceInstance::CAppearanceInstance(CAppearanceTemplatePtr appearanceTemplate)
    : m_template(std::move(appearanceTemplate))
{
    if (!m_template)
        return;
    static_cast<CPropertySet&>(*this) = m_template->GetDefaults();
    for (auto& value : m_values)
        value = ownValue(value);
}

String CAppearanceInstance::GetTemplateName() const
{
    return ValueOr<String>("template", {});
}

String CAppearanceInstance::GetId() const
{
    return ValueOr<String>("id", {});
}

void CAppearanceInstance::SetId(const String& id)
{
    SetProperty("id", MakePropertyValue(id));
}

String CAppearanceInstance::GetName() const
{
    return ValueOr<String>("name", {});
}

void CAppearanceInstance::SetName(const String& name)
{
    SetProperty("name", MakePropertyValue(name));
}

String CAppearanceInstance::GetTags() const
{
    return ValueOr<String>("tags", {});
}

void CAppearanceInstance::SetTags(const String& tags)
{
    SetProperty("tags", MakePropertyValue(tags));
}

String CAppearanceInstance::GetCategory() const
{
    return ValueOr<String>("category", {});
}

void CAppearanceInstance::SetCategory(const String& category)
{
    SetProperty("category", MakePropertyValue(category));
}

int CAppearanceInstance::GetEditType() const
{
    return ValueOr<int>("edit_type", 0);
}

void CAppearanceInstance::SetEditType(int editType)
{
    SetProperty("edit_type", MakePropertyValue(editType));
}

CVec4<float> CAppearanceInstance::GetDiffuse() const
{
    return ValueOr<CVec4<float>>("diffuse_color", {1, 1, 1, 1});
}

void CAppearanceInstance::SetDiffuse(const CVec4<float>& color)
{
    SetProperty("diffuse_color", MakePropertyValue(color));
    SetProperty("transparent", MakePropertyValue(color.w));
}

float CAppearanceInstance::GetTransparent() const
{
    return ValueOr<float>("transparent", 1);
}

void CAppearanceInstance::SetTransparent(float opacity)
{
    SetProperty("transparent", MakePropertyValue(opacity));
    if (!FindProperty("diffuse_color"))
        return;
    CVec4<float> color = GetDiffuse();
    color.w = opacity;
    SetProperty("diffuse_color", MakePropertyValue(color));
}

bool CAppearanceInstance::GetUseDiffuseTexture() const
{
    return ValueOr<bool>("useBaseTexture", false);
}

void CAppearanceInstance::SetUseDiffuseTexture(bool use)
{
    SetProperty("useBaseTexture", MakePropertyValue(use));
}

bool CAppearanceInstance::GetUseBumpTexture() const
{
    return ValueOr<bool>("enableBump", false);
}

void CAppearanceInstance::SetUseBumpTexture(bool use)
{
    SetProperty("enableBump", MakePropertyValue(use));
}

CAppearanceInstancePtr CAppearanceInstance::GetDiffuseTexture() const
{
    return subAppearance(*this, "diffuse_texture");
}

CAppearanceInstancePtr CAppearanceInstance::GetBumpTexture() const
{
    return subAppearance(*this, "bump_texture");
}

String CAppearanceInstance::GetTextureFile() const
{
    return ValueOr<String>("texture_file", {});
}

void CAppearanceInstance::SetTextureFile(const String& path)
{
    SetProperty("texture_file", MakePropertyValue(path));
}

CAppearanceInstancePtr CAppearanceInstance::Clone(const String& newId) const
{
    auto copy = std::make_shared<CAppearanceInstance>();
    copy->Assign(*this);
    copy->SetId(newId);
    return copy;
}

void CAppearanceInstance::Assign(const CAppearanceInstance& other)
{
    if (this == &other)
        return;
    // `other` may be a texture of this appearance and go with the old values.
    std::vector<CPropertyValuePtr> values = other.m_values;
    for (auto& value : values)
        value = ownValue(value);
    m_keys = other.m_keys;
    m_template = other.m_template;
    m_cloudFlag = other.m_cloudFlag;
    m_values = std::move(values);
}

void CAppearanceInstance::IncompleteAssign(const CAppearanceInstance& other, bool takeTemplate, bool exact)
{
    if (this == &other)
        return;
    const CPropertySet before = *this;
    if (exact)
        static_cast<CPropertySet&>(*this) = takeTemplate ? CPropertySet() : CAppearanceInstance(m_template);
    for (const auto& [key, value] : other) {
        const bool taken = takeTemplate || (key != "template" && fits(m_template, other.m_template, key, *value));
        if (taken && !isIdentity(key))
            SetProperty(key, ownValue(value));
    }
    for (const auto& [key, value] : before) {
        if (isIdentity(key) || (!takeTemplate && key == "template"))
            SetProperty(key, value);
    }
    if (takeTemplate)
        m_template = other.m_template;
}

void CAppearanceInstance::IncompleteAssign(const CAppearanceInstancePtr& other, bool takeTemplate, bool exact)
{
    if (other)
        IncompleteAssign(*other, takeTemplate, exact);
}

bool AreEqual(const CAppearanceInstance& a, const CAppearanceInstance& b)
{
    const auto equal = [](const auto& left, const auto& right) {
        return left.first == right.first && left.second->Equals(*right.second);
    };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), equal);
}

bool IsTexture(const CAppearanceInstance& appearance)
{
    return appearance.GetTemplateName() == TextureTemplateName;
}

}  // namespace kiv
