#pragma once

#include <kiv/ParseError.h>

#include <simdjson.h>

namespace kiv {

/// Appends the JSON minified, keys in byte order; `depth` is its level in the document. False with the reason for what
/// is nested too deep or has a key twice.
bool WriteRawJson(simdjson::dom::element json, int depth, String& text, CParseError& error);

}  // namespace kiv
