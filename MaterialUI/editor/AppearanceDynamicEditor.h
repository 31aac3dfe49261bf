#pragma once

#include "AppearanceEditorWidget.h"

#include <kiv/MaterialLibrary.h>

#include <QPointer>

class CDynamicWidget;

/// A property editor whose controls come from the panel description of the appearance's category. 290 pixels wide.
class CAppearanceDynamicEditor : public CAppearanceEditorWidget {
    Q_OBJECT

public:
    /// Manager and library are borrowed and must outlive the editor. Disabled until it has an appearance.
    CAppearanceDynamicEditor(kiv::CAppearanceLibraryManager& manager, kiv::CMaterialLibrary& library, QWidget* parent);

    /// The keyboard focus stays with the control of the same property.
    void Refresh() override;

protected:
    bool event(QEvent* event) override;

public slots:
    void OnChangeAppearance(const kiv::String& propId);
    void TransformEditedData(const kiv::String& data);

private:
    /// Where the keyboard is: the key of a property, which of its widgets (-1 itself), and where in a text.
    struct Focus {
        QString property;
        int part = -1;
        int cursor = 0;
    };

    Focus focused() const;
    void restore(const Focus& focus);
    void replaceControls();

    kiv::CMaterialLibrary& m_library;
    QPointer<CDynamicWidget> m_controls;
    QWidget* m_panel;
};
