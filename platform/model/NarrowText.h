#pragma once

#include <kiv/Types.h>

#include <string_view>

namespace kiv {

/// Documents are UTF-8, narrow strings local 8-bit: the same bytes only where the locale's codec is UTF-8.
String NarrowFromUtf8(std::string_view utf8);

/// Always valid UTF-8: what the narrow text holds beside text becomes U+FFFD.
String Utf8FromNarrow(const String& narrow);

}  // namespace kiv
