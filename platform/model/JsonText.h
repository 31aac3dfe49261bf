#pragma once

#include <kiv/Types.h>

#include <string_view>

namespace kiv {

/// Appends to a JSON text; the same value gives the same bytes on every machine.

/// Valid UTF-8 in quotes; escapes only what JSON requires.
void AppendJsonString(String& json, std::string_view utf8);

/// The shortest number that reads back to the same value, always with a point or an exponent. "null" when not finite.
void AppendJsonNumber(String& json, float value);
void AppendJsonNumber(String& json, double value);
void AppendJsonNumber(String& json, int value);

}  // namespace kiv
