#pragma once

#include <kiv/AppearanceUIBuilder.h>
#include <kiv/ParseError.h>
#include <kiv/PropertySet.h>

#include <map>
#include <optional>
#include <vector>

namespace kiv {

/// The declared type of a template parameter; in documents "string", "int", "float", "bool", "vec2", "vec3", "vec4",
/// "color4", "matrix3" and "Texture". A "color4" is a CVec4<float>.
enum class EnParameterType { String, Int, Float, Bool, Vec2, Vec3, Vec4, Color4, Matrix3, Texture };

struct CTemplateParameter {
    String key;
    EnParameterType type = EnParameterType::String;
    /// The declared default. For a texture this is a prototype sub-appearance: clone it, never hand it out.
    CPropertyValuePtr defaultValue;
    /// The range that a control offers, in the parameter's unit; a value outside it is still a value.
    std::optional<double> rangeMin;
    std::optional<double> rangeMax;
};

/// What an appearance type is: its parameters with types and defaults, the shader parts that draw it, the bindings of
/// parameters to uniforms, and the description of its editor panel. Immutable once read; shared.
/// The document format is written down in docs/formats.md.
class CAppearanceTemplate {
public:
    const String& GetName() const { return m_name; }
    const String& GetCategory() const { return m_category; }
    const String& GetDescription() const { return m_description; }

    /// All parameters, in key order. "template", "id", "name", "tags", "category" and "edit_type" are declared even
    /// where the document leaves them out (of "Texture" only the first two): readers rely on their types.
    const std::vector<CTemplateParameter>& GetParameters() const { return m_parameters; }
    /// The parameter of the key, or null.
    const CTemplateParameter* FindParameter(const String& key) const;
    /// A property set with the default of every parameter, "template" included; textures in it are prototypes.
    const CPropertySet& GetDefaults() const { return m_defaults; }

    const String& GetShaderId() const { return m_shaderId; }
    const std::vector<String>& GetShaderParts() const { return m_shaderParts; }
    const std::vector<String>& GetFastShaderParts() const { return m_fastShaderParts; }
    /// The keys that a flat preview tries in order: a texture in use, then a colour.
    const std::vector<String>& GetPreviewKeys() const { return m_previewKeys; }
    /// Parameter key ("roughness", or "diffuse_texture:transform" for one of a texture) to uniform name.
    const std::map<String, String>& GetVertexBindings() const { return m_vertexBindings; }
    const std::map<String, String>& GetFragmentBindings() const { return m_fragmentBindings; }
    const std::map<String, String>& GetPhongBindings() const { return m_phongBindings; }

    /// The top-level elements of the panel, in order.
    const std::vector<CAppearanceUIElement>& GetUi() const { return m_ui; }

    /// Reads a template document (UTF-8 JSON). Null with the reason for malformed JSON, an unknown type, a default that
    /// does not fit its type, a range that is reversed or not two numbers, a ui element of an unknown type, one that
    /// shows no parameter or one that it cannot show, elements nested deeper than 8 levels. `textures` is the "Texture"
    /// template that texture parameters instantiate; it may be null while that template itself is read.
    static CAppearanceTemplatePtr FromJson(const String& text, const CAppearanceTemplatePtr& textures,
                                           CParseError& error);

private:
    friend class CAppearanceTemplateReader;

    String m_name;
    String m_category;
    String m_description;
    std::vector<CTemplateParameter> m_parameters;
    CPropertySet m_defaults;
    String m_shaderId;
    std::vector<String> m_shaderParts;
    std::vector<String> m_fastShaderParts;
    std::vector<String> m_previewKeys;
    std::map<String, String> m_vertexBindings;
    std::map<String, String> m_fragmentBindings;
    std::map<String, String> m_phongBindings;
    std::vector<CAppearanceUIElement> m_ui;
};

}  // namespace kiv
