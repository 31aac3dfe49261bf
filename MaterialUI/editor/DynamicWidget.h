#pragma once

#include <kiv/AppearanceUIBuilder.h>
#include <kiv/MaterialLibrary.h>

#include <QWidget>

class CImageCtrl;
class QBoxLayout;

/// The controls of one appearance, built from the panel description of its category. A change is written into the
/// appearance at once and announced twice: first as a record of the appearance before it, then by the key.
///
/// Records are made for appearances of a user library, "Customer Library" before all others; of an appearance that lies
/// in none they are empty. While the controls are being built nothing is written or announced.
class CDynamicWidget : public QWidget, public kiv::CAppearanceUIBuilder {
    Q_OBJECT

public:
    /// Manager and library are borrowed and must outlive the widget.
    CDynamicWidget(kiv::CAppearanceLibraryManager& manager, kiv::CMaterialLibrary& library, QWidget* parent);

    /// Builds the controls for the appearance; for the one that is shown already nothing happens.
    void SetAppearance(const kiv::CAppearanceInstancePtr& appearance);

    /// Builds nothing unless GMaterialUI::CGlobalConfig allows names to be edited.
    bool BuildNameLine(const kiv::CAppearanceUIElement& element, const kiv::String& parentGroup) override;
    bool BuildGroup(const kiv::CAppearanceUIElement& element, const kiv::String& parentGroup) override;
    bool BuildColor(const kiv::CAppearanceUIElement& element, const kiv::String& parentGroup) override;
    bool BuildImage(const kiv::CAppearanceUIElement& element, const kiv::String& parentGroup) override;
    /// A "range" that is not two numbers throws boost::bad_lexical_cast; templates are checked when they are read.
    bool BuildNumber(const kiv::CAppearanceUIElement& element, const kiv::String& parentGroup) override;
    bool BuildSeparator(const kiv::CAppearanceUIElement& element, const kiv::String& parentGroup) override;
    bool BuildLabel(const kiv::CAppearanceUIElement& element, const kiv::String& parentGroup) override;

signals:
    void ChangeAppearance(const kiv::String& propId);
    /// The record with which CAppearanceSerializer takes the change back that follows.
    void TransformEditedData(const kiv::String& data);

public slots:
    void OnPropertyChanged(const kiv::String& id, const kiv::CPropertyValuePtr& val);
    void OnImageChanged(const kiv::String& id, const kiv::CPropertyValuePtr& val);
    /// Lets the user place the texture of the key, and keeps the placement however the dialog was closed; unless the
    /// appearance, or its texture, is another one by then.
    void OnShowTextureEditor(const QString& id);
    /// Makes the normal map of the diffuse texture beside it, unless it is there already, and lets the control show and
    /// announce it; the map is placed as the texture is. What cannot be written is told.
    void OnGenNormalMap(CImageCtrl* pControl);

private:
    bool announceEdit(const kiv::String& key);
    kiv::CAppearanceInstancePtr textureOf(const kiv::String& key) const;
    void keepPlacement(const kiv::String& key, kiv::CAppearanceInstance& texture,
                       const kiv::CAppearanceInstance& placed);
    QString makeNormalMap(const QString& picture);
    kiv::CAppearanceLibraryPtr libraryOf(const kiv::CAppearanceInstancePtr& appearance) const;

    /// The value that the element shows; null when it is no T, which the control then leaves at its default.
    template <typename T>
    kiv::CPropertyValuePtr valueOf(const kiv::CAppearanceUIElement& element) const;
    QBoxLayout& layoutOf(const kiv::String& group) const;
    void addRow(const kiv::CAppearanceUIElement& element, const kiv::String& parentGroup, QWidget& control);
    void describe(const kiv::CAppearanceUIElement& element, QWidget& control) const;
    void setRange(const kiv::CAppearanceUIElement& element, class CSpinBoxCtrl& control) const;
    QString shownText(const kiv::String& stored) const;

    kiv::CAppearanceLibraryManager& m_manager;
    kiv::CMaterialLibrary& m_library;
    kiv::CAppearanceInstancePtr m_appearance;
    bool m_isBuilt = false;
    /// The texture that a normal map is being made of, whose placement the map takes over.
    kiv::CAppearanceInstancePtr m_mapped;
};
