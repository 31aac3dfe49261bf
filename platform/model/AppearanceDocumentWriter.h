#pragma once

#include <kiv/Types.h>

namespace kiv {

/// The document of an appearance: one JSON object, keys in byte order, no blanks.
String WriteAppearanceDocument(const CAppearanceInstance& appearance);

}  // namespace kiv
