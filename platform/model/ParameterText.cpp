#include "ParameterText.h"

#include <charconv>
#include <cmath>
#include <cstring>

namespace kiv {

namespace {

CPropertyValuePtr parseInt(std::string_view text)
{
    int value = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    return result.ec == std::errc() && result.ptr == end ? MakePropertyValue(value) : nullptr;
}

CPropertyValuePtr parseBool(std::string_view text)
{
    return text == "0" || text == "1" ? MakePropertyValue(text == "1") : nullptr;
}

std::string_view trimmed(std::string_view text)
{
    const auto first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

/// As many numbers as there are commas and one more, into as many floats.
bool parseFloats(std::string_view text, float* values, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        const auto comma = text.find(',');
        if ((comma == std::string_view::npos) != (i + 1 == count))
            return false;
        const auto number = ParseNumber(trimmed(text.substr(0, comma)));
        if (!number || !std::isfinite(float(*number)))
            return false;
        values[i] = float(*number);
        text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
    }
    return true;
}

template <typename T>
CPropertyValuePtr parseVector(std::string_view text)
{
    T value{};
    if (text.empty())
        return MakePropertyValue(value);
    float values[sizeof(T) / sizeof(float)];
    if (!parseFloats(text, values, sizeof(T) / sizeof(float)))
        return {};
    std::memcpy(static_cast<void*>(&value), values, sizeof(value));
    return MakePropertyValue(value);
}

}  // namespace

std::optional<EnParameterType> ParameterTypeOf(std::string_view name)
{
    static const std::map<std::string_view, EnParameterType> types = {
        {"string", EnParameterType::String},   {"int", EnParameterType::Int},
        {"float", EnParameterType::Float},     {"bool", EnParameterType::Bool},
        {"vec2", EnParameterType::Vec2},       {"vec3", EnParameterType::Vec3},
        {"vec4", EnParameterType::Vec4},       {"color4", EnParameterType::Color4},
        {"matrix3", EnParameterType::Matrix3}, {"Texture", EnParameterType::Texture},
    };
    const auto found = types.find(name);
    return found == types.end() ? std::nullopt : std::make_optional(found->second);
}

std::optional<double> ParseNumber(std::string_view text)
{
    double value = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    const bool whole = result.ec == std::errc() && result.ptr == end && std::isfinite(value);
    return whole ? std::make_optional(value) : std::nullopt;
}

CPropertyValuePtr ParseParameterText(EnParameterType type, const String& text)
{
    switch (type) {
    case EnParameterType::String:
        return MakePropertyValue(text);
    case EnParameterType::Int:
        return parseInt(text.empty() ? "0" : std::string_view(text));
    case EnParameterType::Bool:
        return parseBool(text.empty() ? "0" : std::string_view(text));
    case EnParameterType::Float:
        return parseVector<float>(text);
    case EnParameterType::Vec2:
        return parseVector<CVec2<float>>(text);
    case EnParameterType::Vec3:
        return parseVector<CVec3<float>>(text);
    case EnParameterType::Vec4:
    case EnParameterType::Color4:
        return parseVector<CVec4<float>>(text);
    case EnParameterType::Matrix3:
        return parseVector<CMatrix3<float>>(text);
    case EnParameterType::Texture:
        break;
    }
    return {};
}

}  // namespace kiv
