#pragma once

#include <kiv/AppearanceInstance.h>

#include <vector>

namespace kiv {

/// The texture sub-appearances of an appearance that name a file, in key order. They are the appearance's own: setting
/// their file changes it.
std::vector<CAppearanceInstancePtr> FindTextures(const CAppearanceInstance& appearance);

}  // namespace kiv
