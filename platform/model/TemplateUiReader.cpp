#include "TemplateUiReader.h"

#include "JsonDocument.h"
#include "NarrowText.h"
#include "ParameterText.h"
#include "UiElementType.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kiv {

namespace {

constexpr int MaxUiLevels = 8;
const char* const PanelsKey = "StackPanels";

}  // namespace

bool CTemplateUiReader::readPanels(const simdjson::dom::object& panel, int level,
                                   std::vector<CAppearanceUIElement>& elements) const
{
    const auto json = panel.at_key(PanelsKey);
    if (json.error())
        return true;
    simdjson::dom::array list;
    if (json.get(list))
        return refuseAt(PanelsKey, "expected a list of elements");
    if (level > MaxUiLevels)
        return refuseAt(PanelsKey, "elements are nested deeper than " + std::to_string(MaxUiLevels) + " levels");
    std::size_t index = 0;
    for (const auto entry : list) {
        if (!readElement(entry, level, elements))
            return placeAt(std::to_string(index)) || placeAt(PanelsKey);
        ++index;
    }
    return true;
}

bool CTemplateUiReader::readElement(simdjson::dom::element json, int level,
                                    std::vector<CAppearanceUIElement>& elements) const
{
    simdjson::dom::object fields;
    if (json.get(fields))
        return Refuse(m_error, "an element is an object");
    std::map<String, String> attributes;
    std::vector<CAppearanceUIElement> children;
    if (!readAttributes(fields, attributes) || !readPanels(fields, level + 1, children))
        return false;
    elements.emplace_back(std::move(attributes), std::move(children));
    return check(elements.back()) || name(elements.back());
}

// The place counts elements, which is hard to follow in a long panel.
bool CTemplateUiReader::name(const CAppearanceUIElement& element) const
{
    const String id = element.GetAttribute("id");
    if (!id.empty())
        m_error.reason = "element \"" + id + "\": " + m_error.reason;
    return false;
}

bool CTemplateUiReader::readAttributes(const simdjson::dom::object& json, std::map<String, String>& attributes) const
{
    for (const auto field : json) {
        if (field.key == PanelsKey)
            continue;
        std::string_view utf8;
        if (field.value.get(utf8))
            return refuseAt(field.key, "an element's attributes are texts");
        if (!attributes.emplace(NarrowFromUtf8(field.key), NarrowFromUtf8(utf8)).second)
            return refuseAt(field.key, "the key stands here twice");
    }
    return true;
}

bool CTemplateUiReader::check(const CAppearanceUIElement& element) const
{
    const auto* type = FindUiElementType(element.GetAttribute("type"));
    if (!type)
        return refuseAt("type", "there is no element of type \"" + element.GetAttribute("type") + "\"");
    if (!element.GetStackPanels().empty() && !type->isGroup)
        return refuseAt(PanelsKey, "only a group has elements of its own");
    if ((type->isControl || type->isGroup) && element.GetAttribute("id").empty())
        return refuseAt("id", "the element has no identifier");
    if (element.HasAttribute("range") && !checkRange(element.GetAttribute("range")))
        return false;
    return checkParameter(element, *type);
}

bool CTemplateUiReader::checkParameter(const CAppearanceUIElement& element, const CUiElementType& type) const
{
    const String key = element.GetAttribute("parameter");
    if (key.empty())
        return !type.isControl || refuseAt("parameter", "the element shows no parameter");
    const auto* parameter = m_parameters.FindParameter(key);
    if (!parameter)
        return refuseAt("parameter", "there is no parameter \"" + key + "\"");
    if (std::find(type.shown.begin(), type.shown.end(), parameter->type) == type.shown.end())
        return refuseAt("parameter", "the parameter \"" + key + "\" is of no type that this element shows");
    const auto* written = m_parameters.FindParameter(element.GetAttribute("id"));
    if (written && written->type != parameter->type)
        return refuseAt("id", "edits would go to a parameter of another type than \"" + key + "\"");
    return true;
}

bool CTemplateUiReader::checkRange(const String& range) const
{
    const auto separator = range.find('~');
    const std::string_view text = range;
    const double none = std::numeric_limits<double>::quiet_NaN();
    const double low = ParseNumber(text.substr(0, separator)).value_or(none);
    const double high = separator == String::npos ? none : ParseNumber(text.substr(separator + 1)).value_or(none);
    if (std::isnan(low) || std::isnan(high))
        return refuseAt("range", "expected two numbers joined by \"~\"");
    if (low >= high)
        return refuseAt("range", "the lower bound is not below the upper one");
    // The range is shown over 100 units, counted in single precision from the lower bound.
    const auto scale = float(100 / (high - low));
    return (std::isnormal(scale) && low + 100 > low) || refuseAt("range", "the range cannot be shown");
}

bool CTemplateUiReader::refuseAt(std::string_view key, String reason) const
{
    m_error.reason = std::move(reason);
    return placeAt(key);
}

bool CTemplateUiReader::placeAt(std::string_view key) const
{
    m_error.place.insert(0, PointerSegment(key));
    return false;
}

}  // namespace kiv
