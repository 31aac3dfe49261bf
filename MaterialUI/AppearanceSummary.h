#pragma once

#include <kiv/AppearanceLibraryManager.h>

#include <QVector>
#include <QWidget>

#include <functional>

class CAppearancePicture;
class QFormLayout;
class QLabel;
class QPushButton;

/// What is known of the selected appearance, to look at: its flat picture, name, type, main values and tags, and a
/// button to apply it once more. It stands where preview and editor belong.
class CAppearanceSummary : public QWidget {
    Q_OBJECT

public:
    /// The manager is borrowed and must outlive the widget.
    CAppearanceSummary(kiv::CAppearanceLibraryManager& manager, QWidget* parent);

    /// Null empties the panel.
    void ShowAppearance(const kiv::CAppearanceInstancePtr& appearance);
    /// What is shown; null when nothing is.
    const kiv::CAppearanceInstancePtr& GetAppearance() const { return m_appearance; }
    QPushButton* GetApplyButton() const { return m_applyButton; }

private:
    /// The text of a row for an appearance; an empty one hides the row.
    using RowText = std::function<QString(const kiv::CAppearanceInstance&)>;
    struct Row {
        QLabel* title;
        QLabel* value;
        RowText text;
    };

    QLayout* buildHeading();
    QFormLayout* buildRows();
    void addRow(QFormLayout& form, const QString& title, const RowText& text);
    void showPicture();
    QString categoryText(const kiv::CAppearanceInstance& appearance) const;
    QString textureText(const kiv::CAppearanceInstance& appearance) const;
    QString shownText(const kiv::String& stored) const;

    kiv::CAppearanceLibraryManager& m_manager;
    kiv::CAppearanceInstancePtr m_appearance;
    CAppearancePicture* m_picture;
    QLabel* m_name;
    QLabel* m_category;
    QPushButton* m_applyButton;
    QVector<Row> m_rows;
};
