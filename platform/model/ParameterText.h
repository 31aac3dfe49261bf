#pragma once

#include <kiv/AppearanceTemplate.h>

namespace kiv {

/// Values as template documents write them: as text, whatever their type.

/// The type of the name ("color4"); none for an unknown name.
std::optional<EnParameterType> ParameterTypeOf(std::string_view name);

/// A number without blanks around it, finite; none for anything else.
std::optional<double> ParseNumber(std::string_view text);

/// The value of the text ("0.5", "1,1,1,1", "0"); an empty text is the type's zero. Null when it does not fit the type,
/// and for a texture, which has no text.
CPropertyValuePtr ParseParameterText(EnParameterType type, const String& text);

}  // namespace kiv
