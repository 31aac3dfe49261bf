#pragma once

#include <kiv/AppearanceLibraryManager.h>

#include <QString>

/// What the fuzz targets share. A target reads its input as the product would and checks what must hold for any input.
namespace fuzz {

/// A manager that knows all templates that are shipped.
kiv::CAppearanceLibraryManager& manager();

/// Ends the process, saying why, when something does not hold.
void require(bool holds, const char* what);

/// What is written must read back to the same appearance, and writing that gives the same text again.
void requireRoundTrip(const kiv::CAppearanceInstancePtr& appearance);

}  // namespace fuzz
