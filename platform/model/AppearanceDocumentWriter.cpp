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

// appendValue appends one value; the depth is that of the appearance that holds it.

void appendValue(String& json, float value, int)
{
    AppendJsonNumber(json, value);
}

void appendValue(String& json, int value, int)
{
    AppendJsonNumber(json, value);
}

void appendValue(String& json, bool value, int)
{
    json += value ? "true" : "false";
}

void appendValue(String& json, const String& text, int)
{
    AppendJsonString(json, Utf8FromNarrow(text));
}

void appendValue(String& json, const CRawJson& raw, int)
{
    json += raw.text;
}

/// What no document can hold.
void appendValue(String& json, const std::monostate&, int)
{
    json += "null";
}

void appendValue(String& json, const boost::any&, int)
{
    json += "null";
}

/// A list of the floats that the vector or matrix is made of. With one that is not finite the whole value is null,
/// since a list with a gap would be refused by its reader.
template <typename T>
void appendValue(String& json, const T& vector, int)
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

void appendAppearance(String& json, const CAppearanceInstance& appearance, int depth);

/// Deeper than any reader goes can only be an appearance that holds itself.
void appendValue(String& json, const CAppearanceInstancePtr& sub, int depth)
{
    if (sub && depth < MaxJsonDepth)
        appendAppearance(json, *sub, depth + 1);
    else
        json += "null";
}

void appendAppearance(String& json, const CAppearanceInstance& appearance, int depth)
{
    char separator = '{';
    for (const auto& [key, value] : appearance) {
        json += separator;
        AppendJsonString(json, Utf8FromNarrow(key));
        json += ':';
        value->Visit([&json = json, depth](const auto& held) { appendValue(json, held, depth); });
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
