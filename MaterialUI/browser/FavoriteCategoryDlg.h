#pragma once

#include <MaterialUIExport.h>

#include <QDialog>
#include <QString>

#include <array>

class QAbstractButton;
class QButtonGroup;
class QDialogButtonBox;
class QGridLayout;
class QRadioButton;
class QVBoxLayout;

/// Asks for the category under which an appearance is filed among the favourites.
class MATERIALUI_EXPORT CFavoriteCategoryDlg : public QDialog {
    Q_OBJECT

public:
    /// `category`: the appearance's category now; it is selected as by SetSelectedType.
    CFavoriteCategoryDlg(QString category, QWidget* parent);

    /// Builds buttons and layout. The constructor does; calling it again changes nothing.
    void SetLayout();

    /// Selects a category by its stored name ("TilesPlain"); one that is not offered selects "Other".
    void SetSelectedType(QString name);
    /// The stored name of the category selected, whatever its button shows.
    QString GetSelectedType() const;

    /// Does nothing: one category is always selected.
    void UncheckAll();

public slots:
    void onButtonClicked(QAbstractButton* button);
    /// Takes over the checked button as the selected category.
    void onTypeSelected();

private:
    static constexpr int CategoryCount = 14;

    void addCategories();
    void addButtonBox();

    QVBoxLayout* m_layout = nullptr;
    QGridLayout* m_grid = nullptr;
    QDialogButtonBox* m_buttonBox = nullptr;
    QButtonGroup* m_group = nullptr;
    QString m_selected;
    std::array<const char*, CategoryCount> m_names;
    std::array<QRadioButton*, CategoryCount> m_buttons{};
};
