#pragma once

#include <kiv/AppearanceTemplate.h>

#include <simdjson.h>

namespace kiv {

struct CUiElementType;

/// Reads the panel description of a template document, whose parameters are known already.
class CTemplateUiReader {
public:
    CTemplateUiReader(const CAppearanceTemplate& parameters, CParseError& error)
        : m_parameters(parameters), m_error(error)
    {
    }

    /// The elements of the "StackPanels" of `panel`; none when it has no such list. The error's place is below `panel`.
    bool Read(const simdjson::dom::object& panel, std::vector<CAppearanceUIElement>& elements) const
    {
        return readPanels(panel, 1, elements);
    }

private:
    bool readPanels(const simdjson::dom::object& panel, int level, std::vector<CAppearanceUIElement>& elements) const;
    bool readElement(simdjson::dom::element json, int level, std::vector<CAppearanceUIElement>& elements) const;
    bool readAttributes(const simdjson::dom::object& json, std::map<String, String>& attributes) const;
    bool check(const CAppearanceUIElement& element) const;
    bool name(const CAppearanceUIElement& element) const;
    bool checkParameter(const CAppearanceUIElement& element, const CUiElementType& type) const;
    bool checkRange(const String& range) const;
    bool refuseAt(std::string_view key, String reason) const;
    bool placeAt(std::string_view key) const;

    const CAppearanceTemplate& m_parameters;
    CParseError& m_error;
};

}  // namespace kiv
