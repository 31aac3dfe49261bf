#pragma once

#include <kiv/Types.h>
#include <kiv/Vector.h>

namespace kiv {

/// Receives the flat preview of an appearance: CAppearanceLibraryManager::Preview calls exactly one of the two.
class CAppearancePreviewer {
public:
    virtual ~CAppearancePreviewer() = default;

    /// Red, green, blue, alpha, each clamped to 0..1.
    virtual void Preview(const CVec4<float>& color) = 0;
    /// The absolute path of the texture in use, as local 8-bit text. The file may be missing or broken.
    virtual void Preview(const String& imageFile) = 0;
};

}  // namespace kiv
