#include "HostMaterialDialog.h"

#include "CloudAccount.h"

#include <MaterialConstants.h>

HostMaterialDialog::HostMaterialDialog(kiv::CMaterialLibrary& library, CloudAccount& account, bool translate,
                                       QWidget* window)
    : CMaterialLibraryWidget(&library, false, window, translate, CUSTOMER_LIBRARY_NAME, true)
{
    SetLoginCallback(&account);
}
