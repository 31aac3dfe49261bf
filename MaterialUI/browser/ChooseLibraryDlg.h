#pragma once

#include <kiv/AppearanceLibraryManager.h>

#include <QDialog>

#include <memory>

namespace Ui {
class CChooseLibraryDlg;
}

/// Asks for one of the manager's libraries, by name.
class CChooseLibraryDlg : public QDialog {
    Q_OBJECT

public:
    /// Offers the libraries that there are now; the manager is not kept.
    CChooseLibraryDlg(kiv::CAppearanceLibraryManager& manager, QWidget* parent);
    ~CChooseLibraryDlg() override;

    /// The name chosen.
    kiv::String GetLibraryName() const;

private:
    std::unique_ptr<Ui::CChooseLibraryDlg> m_ui;
};
