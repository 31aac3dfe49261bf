#include "GlobalConfig.h"

static bool s_materialNameEditable = false;

void GMaterialUI::CGlobalConfig::SetMaterialNameEditable(bool editable)
{
    s_materialNameEditable = editable;
}

bool GMaterialUI::CGlobalConfig::isMaterialNameEditable()
{
    return s_materialNameEditable;
}
