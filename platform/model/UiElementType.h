#pragma once

#include <kiv/AppearanceTemplate.h>

namespace kiv {

/// A kind of panel element: the builder's operation for it and what it may show.
struct CUiElementType {
    const char* name;
    bool (CAppearanceUIBuilder::*build)(const CAppearanceUIElement&, const String&);
    bool isGroup;
    bool isControl;  ///< has a parameter and the identifier that edits are written to
    std::vector<EnParameterType> shown;
};

/// The kind of the name (attribute "type"), or null.
const CUiElementType* FindUiElementType(const String& name);

}  // namespace kiv
