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

void HostMaterialDialog::AppearanceDeletedFunc(const kiv::CAppearanceInstancePtr& appearance)
{
    CMaterialLibraryWidget::AppearanceDeletedFunc(appearance);
    emit deleted(appearance);
}

int HostMaterialDialog::CountAppearanceUses(const kiv::CAppearanceInstancePtr& appearance)
{
    return m_countUses(appearance);
}
