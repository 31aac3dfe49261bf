#include "FavoriteCategoryDlg.h"

#include "DialogButtons.h"

#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

constexpr int ColumnCount = 3;

}  // namespace

CFavoriteCategoryDlg::CFavoriteCategoryDlg(QString category, QWidget* parent)
    : QDialog(parent), m_names{QT_TR_NOOP("Brick"),    QT_TR_NOOP("Carpet"),     QT_TR_NOOP("Ceiling"),
                               QT_TR_NOOP("Concrete"), QT_TR_NOOP("Generic"),    QT_TR_NOOP("Glass"),
                               QT_TR_NOOP("Stone"),    QT_TR_NOOP("Paint"),      QT_TR_NOOP("Plastic"),
                               QT_TR_NOOP("Roof"),     QT_TR_NOOP("TilesPlain"), QT_TR_NOOP("Wallpaper"),
                               QT_TR_NOOP("Wood"),     QT_TR_NOOP("Other")}
{
    SetLayout();
    SetSelectedType(std::move(category));
}

void CFavoriteCategoryDlg::SetLayout()
{
    if (m_layout)
        return;
    setWindowTitle(tr("收藏"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setFixedSize(370, 160);
    QFont fitting = font();
    fitting.setPointSize(9);
    setFont(fitting);
    m_layout = new QVBoxLayout(this);
    m_layout->setContentsMargins(12, 8, 12, 8);
    m_layout->setSpacing(4);
    addCategories();
    addButtonBox();
}

void CFavoriteCategoryDlg::addCategories()
{
    m_grid = new QGridLayout;
    m_grid->setSpacing(2);
    m_group = new QButtonGroup(this);
    m_group->setExclusive(true);
    for (int i = 0; i < CategoryCount; ++i) {
        m_buttons[i] = new QRadioButton(tr(m_names[i]), this);
        m_group->addButton(m_buttons[i], i);
        m_grid->addWidget(m_buttons[i], i / ColumnCount, i % ColumnCount);
    }
    m_layout->addLayout(m_grid);
    connect(m_group, SIGNAL(buttonClicked(QAbstractButton*)), this, SLOT(onButtonClicked(QAbstractButton*)));
}

void CFavoriteCategoryDlg::addButtonBox()
{
    m_buttonBox = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    TranslateButtons(*m_buttonBox);
    auto* bottom = new QHBoxLayout;
    bottom->setSpacing(0);
    bottom->setContentsMargins(0, 0, 0, 0);
    bottom->addSpacerItem(new QSpacerItem(50, 20, QSizePolicy::Expanding, QSizePolicy::Minimum));
    bottom->addWidget(m_buttonBox);
    m_layout->addLayout(bottom);
    connect(m_buttonBox, SIGNAL(accepted()), this, SLOT(onTypeSelected()));
    connect(m_buttonBox, SIGNAL(accepted()), this, SLOT(accept()));
    connect(m_buttonBox, SIGNAL(rejected()), this, SLOT(reject()));
}

void CFavoriteCategoryDlg::SetSelectedType(QString name)
{
    int id = CategoryCount - 1;
    for (int i = 0; i < CategoryCount; ++i) {
        if (name == m_names[i])
            id = i;
    }
    m_buttons[id]->setChecked(true);
    m_buttons[id]->setFocus();  // for the arrow keys, which choose only from here on
    onTypeSelected();
}

QString CFavoriteCategoryDlg::GetSelectedType() const
{
    return m_selected;
}

void CFavoriteCategoryDlg::UncheckAll()
{
}

void CFavoriteCategoryDlg::onButtonClicked(QAbstractButton*)
{
    onTypeSelected();
}

void CFavoriteCategoryDlg::onTypeSelected()
{
    if (m_group->checkedId() >= 0)
        m_selected = m_names[m_group->checkedId()];
}
