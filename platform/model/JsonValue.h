#pragma once

#include <kiv/ParseError.h>
#include <kiv/PropertyValue.h>

#include <simdjson.h>

namespace kiv {

/// Single values of a parsed document, texture sub-appearances excepted.

/// Deepest nesting that is walked; a document itself is level 1.
constexpr int MaxJsonDepth = 32;

/// Reads a value of the type that `like` holds. `value` holds nothing where it equals `like`, so that appearances can
/// share their template's defaults. False with the reason for a value of another type.
bool ReadTypedValue(simdjson::dom::element json, const CPropertyValue& like, CPropertyValue& value, CParseError& error);

/// The value of an undeclared key by its looks; CRawJson for what is no value type. False with the reason for what is
/// nested too deep or has a key twice.
bool ReadUntypedValue(simdjson::dom::element json, int depth, CPropertyValue& value, CParseError& error);

}  // namespace kiv
