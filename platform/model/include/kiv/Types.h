#pragma once

#include <memory>
#include <string>

namespace kiv {

/// The model's narrow string: names, identifiers, tags, category paths and library names cross the interface in it,
/// as local 8-bit text (GStdStringTrans). Paths cross as wide strings.
using String = std::string;

class CAppearanceInstance;
class CAppearanceLibrary;
class CAppearanceLibraryManager;
class CAppearanceTemplate;
class CPropertyValue;

/// Signals and slots are matched by signature text: keep these names in every signature.
using CAppearanceInstancePtr = std::shared_ptr<CAppearanceInstance>;
using CAppearanceLibraryPtr = std::shared_ptr<CAppearanceLibrary>;
using CAppearanceTemplatePtr = std::shared_ptr<const CAppearanceTemplate>;

/// Values are immutable, so one value may be shared by any number of property sets; see CPropertyValue.
using CPropertyValuePtr = std::shared_ptr<CPropertyValue>;

}  // namespace kiv
