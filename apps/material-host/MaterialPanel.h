#pragma once

#include "MaterialSwatch.h"
#include "ProjectDocument.h"

#include <QWidget>

class QFormLayout;
class QLabel;
class QPushButton;

/// What the selected element is made of, and the way to another material.
class MaterialPanel : public QWidget {
    Q_OBJECT

public:
    MaterialPanel(const kiv::CAppearanceLibraryManager& manager, const MaterialFill& fill, QWidget* parent = nullptr);

    /// Shows the element with its material; a null material shows that nothing is selected.
    void show(const QString& elementName, const kiv::CAppearanceInstancePtr& material, MaterialSource source);
    QPushButton* libraryButton() const { return m_button; }

    QSize sizeHint() const override;

signals:
    void libraryRequested();

private:
    static QString sourceText(MaterialSource source);
    QLabel* addRow(QFormLayout& form, const QString& title);
    void showSwatch(const kiv::CAppearanceInstancePtr& material);
    QString shown(const kiv::String& stored) const;
    QString categoryText(const kiv::String& category) const;
    QString repeatText(const kiv::CAppearanceInstance& material) const;
    QString opacityText(const kiv::CAppearanceInstance& material) const;

    const kiv::CAppearanceLibraryManager& m_manager;
    const MaterialFill& m_fill;
    QLabel* m_element;
    QLabel* m_swatch;
    QWidget* m_details;
    QLabel* m_name;
    QLabel* m_category;
    QLabel* m_repeat;
    QLabel* m_opacity;
    QLabel* m_source;
    QLabel* m_tags;
    QPushButton* m_button;
};
