#include "HostMaterialDialog.h"

#include "CloudAccount.h"

#include <MaterialConstants.h>

HostMaterialDialog::HostMaterialDialog(kiv::CMaterialLibrary& library, CloudAccount& account, CountUses countUses,
                                       bool translate, QWidget* window)
    : CMaterialLibraryWidget(&library, false, window, translate, CUSTOMER_LIBRARY_NAME, true),
      m_manager(*library.GetMaterialManager()), m_countUses(std::move(countUses))
{
    SetLoginCallback(&account);
}

void HostMaterialDialog::AppearanceDeletedFunc(const kiv::CAppearanceInstancePtr& appearance)
{
    const bool wasInProject = isInProject(appearance);
    CMaterialLibraryWidget::AppearanceDeletedFunc(appearance);
    if (wasInProject && !isInProject(appearance))
        emit deleted(appearance);
}

bool HostMaterialDialog::isInProject(const kiv::CAppearanceInstancePtr& appearance) const
{
    const auto project = m_manager.FindUserAppearanceLibrary(CUSTOMER_LIBRARY_NAME);
    return appearance && project && project->FindInstance(appearance->GetId()) == appearance;
}

int HostMaterialDialog::CountAppearanceUses(const kiv::CAppearanceInstancePtr& appearance)
{
    return m_countUses(appearance);
}
