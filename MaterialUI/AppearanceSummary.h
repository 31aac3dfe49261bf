#pragma once

#include <kiv/AppearanceLibraryManager.h>

#include <QVector>
#include <QWidget>

#include <functional>

class QFormLayout;
class QLabel;
class QPushButton;

/// What is known of the selected appearance: its name, type, main values and tags, and a button to apply it once more.
/// It stands where the editor belongs.
class CAppearanceSummary : public QWidget {
    Q_OBJECT

public:
    /// The manager is borrowed and must outlive the widget.
    CAppearanceSummary(kiv::CAppearanceLibraryManager& manager, QWidget* parent);

    /// Null empties the panel.
    void ShowAppearance(const kiv::CAppearanceInstancePtr& appearance);
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
    QString categoryText(const kiv::CAppearanceInstance& appearance) const;
    QString textureText(const kiv::CAppearanceInstance& appearance) const;
    QString shownText(const kiv::String& stored) const;

    kiv::CAppearanceLibraryManager& m_manager;
    QLabel* m_name;
    QLabel* m_category;
    QPushButton* m_applyButton;
    QVector<Row> m_rows;
};
