#include "UiWalk.h"

#include "UiElementType.h"

#include <algorithm>

namespace kiv {

namespace {

bool walk(const std::vector<CAppearanceUIElement>& elements, const String& parentGroup, CAppearanceUIBuilder& builder)
{
    return std::all_of(elements.begin(), elements.end(), [&](const CAppearanceUIElement& element) {
        const auto* type = FindUiElementType(element.GetAttribute("type"));
        return type && (builder.*type->build)(element, parentGroup) &&
               walk(element.GetStackPanels(), element.GetAttribute("id"), builder);
    });
}

}  // namespace

bool WalkUi(const std::vector<CAppearanceUIElement>& elements, CAppearanceUIBuilder& builder)
{
    return walk(elements, {}, builder);
}

}  // namespace kiv
