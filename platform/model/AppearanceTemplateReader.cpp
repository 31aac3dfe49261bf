#include "AppearanceTemplateReader.h"

#include "JsonDocument.h"
#include "NarrowText.h"
#include "ParameterText.h"
#include "TemplateUiReader.h"

#include <algorithm>

namespace kiv {

namespace {

using simdjson::dom::element;
using simdjson::dom::object;

const char* const TextureTemplateName = "Texture";

/// The fields of the object of the key; none when the key is missing. False for a key that holds something else.
bool fieldsAt(const object& json, const char* key, std::vector<simdjson::dom::key_value_pair>& fields)
{
    const auto value = json.at_key(key);
    object found;
    if (value.error() == simdjson::NO_SUCH_FIELD)
        return true;
    if (value.get(found))
        return false;
    for (const auto field : found)
        fields.push_back(field);
    return true;
}

}  // namespace

CAppearanceTemplateReader::CAppearanceTemplateReader(CAppearanceTemplatePtr textures, CParseError& error)
    : m_textures(std::move(textures)), m_error(error), m_result(std::make_shared<CAppearanceTemplate>())
{
}

CAppearanceTemplatePtr CAppearanceTemplateReader::Read(element document)
{
    object fields;
    object schema;
    object ui;
    const bool read = (!document.get(fields) || Refuse(m_error, "a template document is an object")) &&
                      readHead(fields) &&
                      (!fields.at_key("schema").get(schema) || refuseAt("schema", "expected an object")) &&
                      (readSchema(schema) || placeAt("schema")) &&
                      (!fields.at_key("ui").get(ui) || refuseAt("ui", "expected an object")) &&
                      (CTemplateUiReader(*m_result, m_error).Read(ui, m_result->m_ui) || placeAt("ui"));
    return read ? m_result : nullptr;
}

bool CAppearanceTemplateReader::readHead(const object& document)
{
    if (!readString(document, "name", m_result->m_name) || !readString(document, "category", m_result->m_category) ||
        !readString(document, "description", m_result->m_description))
        return false;
    return !m_result->m_name.empty() || refuseAt("name", "the template has no name");
}

bool CAppearanceTemplateReader::readSchema(const object& schema)
{
    object parameters;
    object shader;
    if (schema.at_key("parameters").get(parameters))
        return refuseAt("parameters", "expected an object");
    if (schema.at_key("shader").get(shader))
        return refuseAt("shader", "expected an object");
    return (readParameters(parameters) || placeAt("parameters")) && (readShader(shader) || placeAt("shader")) &&
           readBindings(schema, "vs_uniform_bindings", m_result->m_vertexBindings) &&
           readBindings(schema, "fs_uniform_bindings", m_result->m_fragmentBindings) &&
           readBindings(schema, "phong_material_bindings", m_result->m_phongBindings);
}

bool CAppearanceTemplateReader::readParameters(const object& parameters)
{
    for (const auto field : parameters) {
        object json;
        if (field.key.empty() || field.value.get(json))
            return refuseAt(field.key, "a parameter is an object under its key");
        if (!readParameter(NarrowFromUtf8(field.key), json))
            return placeAt(field.key);
    }
    return declareImplicit() && finishParameters();
}

bool CAppearanceTemplateReader::readParameter(const String& key, const object& json)
{
    String typeName;
    if (!readString(json, "type", typeName))
        return false;
    const auto type = ParameterTypeOf(typeName);
    if (!type)
        return refuseAt("type", "there is no type \"" + typeName + "\"");
    CTemplateParameter parameter;
    parameter.key = key;
    parameter.type = *type;
    if (!readDefault(json, parameter) || !readRange(json, "range_min", parameter.rangeMin) ||
        !readRange(json, "range_max", parameter.rangeMax))
        return false;
    if (parameter.rangeMin && parameter.rangeMax && *parameter.rangeMin > *parameter.rangeMax)
        return refuseAt("range_min", "the range is reversed");
    m_result->m_parameters.push_back(std::move(parameter));
    return true;
}

bool CAppearanceTemplateReader::readDefault(const object& json, CTemplateParameter& parameter)
{
    if (parameter.type == EnParameterType::Texture)
        return readTextureDefault(json, parameter);
    String text;
    if (!readString(json, "default_value", text))
        return false;
    parameter.defaultValue = ParseParameterText(parameter.type, text);
    return parameter.defaultValue || refuseAt("default_value", "\"" + text + "\" is no value of this type");
}

bool CAppearanceTemplateReader::readTextureDefault(const object& json, CTemplateParameter& parameter)
{
    std::vector<simdjson::dom::key_value_pair> properties;
    if (!m_textures)
        return refuseAt("type", "a texture needs the template \"Texture\", which is not known");
    if (!fieldsAt(json, "default_value", properties))
        return refuseAt("default_value", "the default of a texture is an object of its properties");
    auto prototype = std::make_shared<CAppearanceInstance>(m_textures);
    for (const auto& field : properties) {
        std::string_view utf8;
        if (field.value.get(utf8))
            return refuseAt(field.key, "expected a text") || placeAt("default_value");
        if (!setTextureProperty(*prototype, NarrowFromUtf8(field.key), NarrowFromUtf8(utf8)))
            return placeAt(field.key) || placeAt("default_value");
    }
    parameter.defaultValue = MakePropertyValue(CAppearanceInstancePtr(std::move(prototype)));
    return true;
}

bool CAppearanceTemplateReader::setTextureProperty(CAppearanceInstance& prototype, const String& key,
                                                   const String& text)
{
    const auto* declared = m_textures->FindParameter(key);
    const auto value = ParseParameterText(declared ? declared->type : EnParameterType::String, text);
    if (!value)
        return Refuse(m_error, "\"" + text + "\" is no value of this type");
    return (key != "template" && prototype.SetProperty(key, value)) ||
           Refuse(m_error, "a texture's default cannot set this");
}

bool CAppearanceTemplateReader::readRange(const object& json, const char* key, std::optional<double>& limit)
{
    if (json.at_key(key).error() == simdjson::NO_SUCH_FIELD)
        return true;
    String text;
    if (!readString(json, key, text))
        return false;
    limit = ParseNumber(text);
    return limit || refuseAt(key, "\"" + text + "\" is no number");
}

/// What the readers of every appearance rely on. A texture sub-appearance is shown under its owner's name and category.
bool CAppearanceTemplateReader::declareImplicit()
{
    const bool isTexture = m_result->m_name == TextureTemplateName;
    auto& parameters = m_result->m_parameters;
    parameters.erase(std::remove_if(parameters.begin(), parameters.end(),
                                    [](const CTemplateParameter& parameter) { return parameter.key == "template"; }),
                     parameters.end());
    return declareText("template", EnParameterType::String, m_result->m_name) &&
           declareText("id", EnParameterType::String, {}) &&
           (isTexture ||
            (declareText("name", EnParameterType::String, {}) && declareText("tags", EnParameterType::String, {}) &&
             declareText("category", EnParameterType::String, m_result->m_category) &&
             declareText("edit_type", EnParameterType::Int, {})));
}

bool CAppearanceTemplateReader::declareText(const char* key, EnParameterType type, const String& text)
{
    auto& parameters = m_result->m_parameters;
    const auto found = std::find_if(parameters.begin(), parameters.end(),
                                    [&](const CTemplateParameter& parameter) { return parameter.key == key; });
    if (found != parameters.end())
        return found->type == type || refuseAt(key, "a well-known key has another type");
    CTemplateParameter parameter;
    parameter.key = key;
    parameter.type = type;
    parameter.defaultValue = ParseParameterText(type, text);
    parameters.push_back(std::move(parameter));
    return true;
}

bool CAppearanceTemplateReader::finishParameters()
{
    auto& parameters = m_result->m_parameters;
    std::sort(parameters.begin(), parameters.end(),
              [](const CTemplateParameter& a, const CTemplateParameter& b) { return a.key < b.key; });
    for (const auto& parameter : parameters) {
        if (m_result->m_defaults.FindProperty(parameter.key))
            return refuseAt(parameter.key, "the key stands here twice");
        m_result->m_defaults.SetProperty(parameter.key, parameter.defaultValue);
    }
    return true;
}

bool CAppearanceTemplateReader::readShader(const object& shader)
{
    return readString(shader, "id", m_result->m_shaderId) &&
           readStrings(shader, "shader_parts", m_result->m_shaderParts) &&
           readStrings(shader, "shader_parts_fast", m_result->m_fastShaderParts) &&
           readStrings(shader, "shader_preview", m_result->m_previewKeys);
}

bool CAppearanceTemplateReader::readBindings(const object& schema, const char* key, std::map<String, String>& bindings)
{
    std::vector<simdjson::dom::key_value_pair> fields;
    if (!fieldsAt(schema, key, fields))
        return refuseAt(key, "expected an object of texts");
    for (const auto& field : fields) {
        std::string_view uniform;
        if (field.value.get(uniform))
            return refuseAt(field.key, "expected a text") || placeAt(key);
        bindings[NarrowFromUtf8(field.key)] = NarrowFromUtf8(uniform);
    }
    return true;
}

bool CAppearanceTemplateReader::readStrings(const object& json, const char* key, std::vector<String>& texts)
{
    const auto value = json.at_key(key);
    simdjson::dom::array list;
    if (value.error() == simdjson::NO_SUCH_FIELD)
        return true;
    if (value.get(list))
        return refuseAt(key, "expected a list of texts");
    for (const element entry : list) {
        std::string_view text;
        if (entry.get(text))
            return refuseAt(key, "expected a list of texts");
        texts.push_back(NarrowFromUtf8(text));
    }
    return true;
}

/// The text of the key; a missing key leaves it as it is.
bool CAppearanceTemplateReader::readString(const object& json, const char* key, String& text)
{
    const auto value = json.at_key(key);
    std::string_view utf8;
    if (value.error() == simdjson::NO_SUCH_FIELD)
        return true;
    if (value.get(utf8))
        return refuseAt(key, "expected a text");
    text = NarrowFromUtf8(utf8);
    return true;
}

bool CAppearanceTemplateReader::refuseAt(std::string_view key, String reason)
{
    m_error.reason = std::move(reason);
    return placeAt(key);
}

bool CAppearanceTemplateReader::placeAt(std::string_view key)
{
    m_error.place.insert(0, PointerSegment(key));
    return false;
}

}  // namespace kiv
