#pragma once

#include <kiv/AppearanceUIBuilder.h>

namespace kiv {

/// Hands the elements to the builder, a group before its children. False when the builder refused one.
bool WalkUi(const std::vector<CAppearanceUIElement>& elements, CAppearanceUIBuilder& builder);

}  // namespace kiv
