#include "HostMaterialDialog.h"

#include "CloudAccount.h"

#include <MaterialConstants.h>

HostMaterialDialog::HostMaterialDialog(kiv::CMaterialLibrary& library, CloudAccount& account, CountUses countUses,
                                       bool translate, QWidget* window)
    : CMaterialLibraryWidget(&library, false, window, translate, CUSTOMER_LIBRARY_NAME, true),
      m_countUses(std::move(countUses))
{
    SetLoginCallback(&account);
}

// The argument may be the browser's own, which the work of the base lets go of.
void HostMaterialDialog::AppearanceDeletedFunc(const kiv::CAppearanceInstancePtr& appearance)
{
    const kiv::CAppearanceInstancePtr material = appearance;
    CMaterialLibraryWidget::AppearanceDeletedFunc(material);
    emit deleted(material);
}

int HostMaterialDialog::CountAppearanceUses(const kiv::CAppearanceInstancePtr& appearance)
{
    return m_countUses(appearance);
}
