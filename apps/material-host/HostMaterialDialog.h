#pragma once

#include <MaterialLibraryWidget.h>

class CloudAccount;

/// The material dialog as this program uses it: logged in with the program's account.
class HostMaterialDialog : public CMaterialLibraryWidget {
    Q_OBJECT

public:
    /// Library and account are borrowed. `translate`: the dialog loads its Chinese texts.
    HostMaterialDialog(kiv::CMaterialLibrary& library, CloudAccount& account, bool translate, QWidget* window);
};
