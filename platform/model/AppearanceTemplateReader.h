#pragma once

#include <kiv/AppearanceInstance.h>
#include <kiv/AppearanceTemplate.h>

#include <simdjson.h>

namespace kiv {

/// Makes a template of a parsed template document. Used once.
class CAppearanceTemplateReader {
public:
    /// `error` gets the JSON pointer and the reason.
    CAppearanceTemplateReader(CAppearanceTemplatePtr textures, CParseError& error);

    CAppearanceTemplatePtr Read(simdjson::dom::element document);

private:
    bool readHead(const simdjson::dom::object& document);
    bool readSchema(const simdjson::dom::object& schema);
    bool readParameters(const simdjson::dom::object& parameters);
    bool readParameter(const String& key, const simdjson::dom::object& json);
    bool readDefault(const simdjson::dom::object& json, CTemplateParameter& parameter);
    bool readTextureDefault(const simdjson::dom::object& json, CTemplateParameter& parameter);
    bool setTextureProperty(CAppearanceInstance& prototype, const String& key, const String& text);
    bool readRange(const simdjson::dom::object& json, const char* key, std::optional<double>& limit);
    bool declareImplicit();
    bool declareText(const char* key, EnParameterType type, const String& text);
    bool finishParameters();
    bool readShader(const simdjson::dom::object& shader);
    bool readBindings(const simdjson::dom::object& schema, const char* key, std::map<String, String>& bindings);
    bool readStrings(const simdjson::dom::object& json, const char* key, std::vector<String>& texts);
    bool readString(const simdjson::dom::object& json, const char* key, String& text);
    bool refuseAt(std::string_view key, String reason);
    bool placeAt(std::string_view key);

    CAppearanceTemplatePtr m_textures;
    CParseError& m_error;
    std::shared_ptr<CAppearanceTemplate> m_result;
};

}  // namespace kiv
