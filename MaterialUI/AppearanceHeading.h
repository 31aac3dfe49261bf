#pragma once

#include <kiv/AppearanceLibraryManager.h>

#include <QWidget>

class QLabel;
class QPushButton;

/// What the editor below is about: the appearance's name, its place among the categories, whether it can only be looked
/// at, and a button to apply it once more.
class CAppearanceHeading : public QWidget {
    Q_OBJECT

public:
    /// The manager is borrowed and must outlive the widget.
    CAppearanceHeading(kiv::CAppearanceLibraryManager& manager, QWidget* parent);

    /// Null asks for a selection.
    void ShowAppearance(const kiv::CAppearanceInstancePtr& appearance);
    QPushButton* GetApplyButton() const { return m_applyButton; }

private:
    void setUpApplyButton();
    QString placeText(const kiv::CAppearanceInstance& appearance) const;
    QString shownText(const kiv::String& stored) const;

    kiv::CAppearanceLibraryManager& m_manager;
    QLabel* m_name;
    QLabel* m_place;
    QPushButton* m_applyButton;
};
