#include "ChooseLibraryDlg.h"

#include "DialogButtons.h"
#include "ui_ChooseLibraryDlg.h"

CChooseLibraryDlg::CChooseLibraryDlg(kiv::CAppearanceLibraryManager& manager, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::CChooseLibraryDlg>())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    TranslateButtons(*m_ui->buttonBox);
    for (auto it = manager.beginLibrary(); it != manager.endLibrary(); ++it)
        m_ui->comboBox->addItem(QString::fromLocal8Bit(it->first.c_str()));
}

CChooseLibraryDlg::~CChooseLibraryDlg() = default;

kiv::String CChooseLibraryDlg::GetLibraryName() const
{
    return m_ui->comboBox->currentText().toLocal8Bit().toStdString();
}
