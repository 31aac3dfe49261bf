#pragma once

#include "MaterialUIExport.h"

/// The module-wide switch. Set once at start-up from the user-interface thread, before any editor is made; not locked.
namespace GMaterialUI {
namespace CGlobalConfig {

/// Whether the editor offers a row for the appearance's name. Initially false.
MATERIALUI_EXPORT void SetMaterialNameEditable(bool editable);
MATERIALUI_EXPORT bool isMaterialNameEditable();

}  // namespace CGlobalConfig
}  // namespace GMaterialUI
