#pragma once

#include <MaterialLibraryWidget.h>

#include <functional>

class CloudAccount;

/// The material dialog as this program uses it: logged in with the program's account, and in touch with the building
/// whose elements have the materials.
class HostMaterialDialog : public CMaterialLibraryWidget {
    Q_OBJECT

public:
    using CountUses = std::function<int(const kiv::CAppearanceInstancePtr&)>;

    /// Library and account are borrowed. `countUses`: how many elements have a material. `translate`: the dialog loads
    /// its Chinese texts.
    HostMaterialDialog(kiv::CMaterialLibrary& library, CloudAccount& account, CountUses countUses, bool translate,
                       QWidget* window);

signals:
    /// The user deleted the material. It comes back, as another object of its id, when that is taken back.
    void deleted(const kiv::CAppearanceInstancePtr& material);

protected:
    void AppearanceDeletedFunc(const kiv::CAppearanceInstancePtr& appearance) override;
    int CountAppearanceUses(const kiv::CAppearanceInstancePtr& appearance) override;

private:
    bool isInProject(const kiv::CAppearanceInstancePtr& appearance) const;

    const kiv::CAppearanceLibraryManager& m_manager;
    CountUses m_countUses;
};
