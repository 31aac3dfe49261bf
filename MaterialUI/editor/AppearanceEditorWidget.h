#pragma once

#include <kiv/AppearanceLibraryManager.h>

#include <QWidget>

/// The face of a property editor to its host.
class CAppearanceEditorWidget : public QWidget {
    Q_OBJECT

public:
    /// The manager is borrowed and must outlive the widget.
    CAppearanceEditorWidget(kiv::CAppearanceLibraryManager& manager, QWidget* parent);

    /// Shows the appearance; for the one that is shown already nothing happens. Null disables the editor and leaves
    /// what was shown.
    void SetAppearance(const kiv::CAppearanceInstancePtr& appearance);
    const kiv::CAppearanceInstancePtr& GetAppearance() const { return m_appearance; }

    /// Shows the current appearance anew, after somebody else changed it. Enables the editor, or disables it when there
    /// is no appearance; a host that only lets it be looked at disables it afterwards.
    virtual void Refresh() = 0;

signals:
    /// The user changed the property of the key.
    void OnAppearancePropertyChanged(const kiv::CAppearanceInstancePtr& pAppearance, const kiv::String& propId);
    /// Comes before the change: the record with which it can be taken back.
    void OnTransformEditedData(const kiv::String& data);
    /// For editors that apply what they edit with a button of their own; the one built here has none.
    void OnApplyTexture();

protected:
    kiv::CAppearanceLibraryManager& m_manager;

private:
    kiv::CAppearanceInstancePtr m_appearance;
};
