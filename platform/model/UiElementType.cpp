#include "UiElementType.h"

#include <algorithm>

namespace kiv {

const CUiElementType* FindUiElementType(const String& name)
{
    using Builder = CAppearanceUIBuilder;
    using Type = EnParameterType;
    static const CUiElementType types[] = {
        {"LineEdit", &Builder::BuildNameLine, false, true, {Type::String}},
        {"GroupBox", &Builder::BuildGroup, true, false, {Type::Bool}},
        {"ColorButton", &Builder::BuildColor, false, true, {Type::Color4, Type::Vec4}},
        {"ImageButton", &Builder::BuildImage, false, true, {Type::Texture}},
        {"SpinBox", &Builder::BuildNumber, false, true, {Type::Float}},
        {"Separator", &Builder::BuildSeparator, false, false, {}},
        {"Label", &Builder::BuildLabel, false, false, {Type::String, Type::Float, Type::Int, Type::Bool}},
    };
    const auto found =
        std::find_if(std::begin(types), std::end(types), [&](const CUiElementType& type) { return type.name == name; });
    return found == std::end(types) ? nullptr : found;
}

}  // namespace kiv
