#include "ChooseTypeDlg.h"

#include "DialogButtons.h"
#include "ui_ChooseTypeDlg.h"

namespace {

const char* const typeNames[] = {
    QT_TRANSLATE_NOOP("CChooseTypeDlg", "Concrete"),   QT_TRANSLATE_NOOP("CChooseTypeDlg", "Generic"),
    QT_TRANSLATE_NOOP("CChooseTypeDlg", "Glass"),      QT_TRANSLATE_NOOP("CChooseTypeDlg", "Metal"),
    QT_TRANSLATE_NOOP("CChooseTypeDlg", "Brick"),      QT_TRANSLATE_NOOP("CChooseTypeDlg", "Plastic"),
    QT_TRANSLATE_NOOP("CChooseTypeDlg", "Wood"),       QT_TRANSLATE_NOOP("CChooseTypeDlg", "Paint"),
    QT_TRANSLATE_NOOP("CChooseTypeDlg", "Carpet"),     QT_TRANSLATE_NOOP("CChooseTypeDlg", "Wallpaper"),
    QT_TRANSLATE_NOOP("CChooseTypeDlg", "Stone"),      QT_TRANSLATE_NOOP("CChooseTypeDlg", "Roof"),
    QT_TRANSLATE_NOOP("CChooseTypeDlg", "TilesPlain"),
};

}  // namespace

CChooseTypeDlg::CChooseTypeDlg(QWidget* parent) : QDialog(parent), m_ui(std::make_unique<Ui::CChooseTypeDlg>())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    TranslateButtons(*m_ui->buttonBox);
    for (const char* name : typeNames)
        m_ui->comboBox->addItem(tr(name), QString(name));
}

CChooseTypeDlg::~CChooseTypeDlg() = default;

void CChooseTypeDlg::SetTypeName(const QString& typeName)
{
    const int index = m_ui->comboBox->findData(typeName);
    if (index >= 0)
        m_ui->comboBox->setCurrentIndex(index);
}

QString CChooseTypeDlg::GetTypeName() const
{
    return m_ui->comboBox->currentData().toString();
}
