#include "AppearanceDocumentWriter.h"

#include "JsonText.h"
#include "JsonValue.h"
#include "NarrowText.h"

#include <kiv/AppearanceInstance.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace kiv {

namespace {

constexpr std::size_t UsualDocumentSize = 2048;

void appendNumber(String& json, float value)
{
    AppendJsonNumber(json, value);
}

void appendNumber(String& json, int value)
{
    AppendJsonNumber(json, value);
}

void appendNumber(String& json, bool value)
{
    json += value ? "true" : "false";
}

/// A list of the floats that the vector or matrix is made of. With one that is not finite the whole value is null,
/// since a list with a gap would be refused by its reader.
template <typename T>
void appendNumber(String& json, const T& vector)
{
    float values[sizeof(T) / sizeof(float)];
    std::memcpy(values, &vector, sizeof(values));
    if (!std::all_of(std::begin(values), std::end(values), [](float value) { return std::isfinite(value); })) {
        json += "null";
        return;
    }
    char separator = '[';
    for (const float value : values) {
        json += separator;
        AppendJsonNumber(json, value);
        separator = ',';
    }
    json += ']';
}

template <typename T>
bool appended(String& json, const CPropertyValue& value)
{
    const T* held = value.TryGet<T>();
    if (held)
        appendNumber(json, *held);
    return held != nullptr;
}

template <typename... Types>
bool anyAppended(String& json, const CPropertyValue& value)
{
    return (appended<Types>(json, value) || ...);
}

void appendAppearance(String& json, const CAppearanceInstance& appearance, int depth);

void appendValue(String& json, const CPropertyValue& value, int depth)
{
    if (const auto* text = value.TryGet<String>())
        AppendJsonString(json, Utf8FromNarrow(*text));
    else if (const auto* raw = value.TryGet<CRawJson>())
        json += raw->text;
    else if (const auto* sub = value.TryGet<CAppearanceInstancePtr>(); sub && *sub && depth < MaxJsonDepth)
        appendAppearance(json, **sub, depth + 1);
    else if (!anyAppended<float, bool, int, CVec4<float>, CVec2<float>, CVec3<float>, CMatrix3<float>>(json, value))
        json += "null";
}

void appendAppearance(String& json, const CAppearanceInstance& appearance, int depth)
{
    char separator = '{';
    for (const auto& [key, value] : appearance) {
        json += separator;
        AppendJsonString(json, Utf8FromNarrow(key));
        json += ':';
        appendValue(json, *value, depth);
        separator = ',';
    }
    json += separator == '{' ? "{}" : "}";
}

}  // namespace

String WriteAppearanceDocument(const CAppearanceInstance& appearance)
{
    String json;
    json.reserve(UsualDocumentSize);
    appendAppearance(json, appearance, 1);
    return json;
}

}  // namespace kiv
