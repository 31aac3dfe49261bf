#pragma once

#include <kiv/AppearanceLibraryManager.h>

#include <QDialog>

#include <memory>

namespace Ui {
class CTextureEditorDlg;
}

/// Lets the user place a texture: real size, offset, rotation, mirroring and repetition, with a preview. It works on
/// the texture that it is given and on nothing else; the caller hands it a copy and takes the values over.
class CTextureEditorDlg : public QDialog {
    Q_OBJECT

public:
    /// The manager is borrowed and must outlive the dialog. `texture` is a texture sub-appearance, not null. `unit` is
    /// the text of the unit of its sizes.
    CTextureEditorDlg(kiv::CAppearanceLibraryManager& manager, const kiv::CAppearanceInstancePtr& texture,
                      const QString& unit, QWidget* parent);
    ~CTextureEditorDlg() override;

    /// Its properties "rotation" (degrees, clockwise), "scale" and "offset" (in the unit), "repeat_h" and "repeat_v"
    /// (0 repeated, 1 mirrored and repeated, 2 clamped) are as edited, and "transform" agrees with them.
    const kiv::CAppearanceInstancePtr& GetTexture() const { return m_texture; }

public slots:
    void OnChangeRotation(double degrees);
    void OnChangeOffsetX(double offset);
    void OnChangeOffsetY(double offset);
    /// The sign, which says whether the axis is mirrored, stays.
    void OnChangeSampleWidth(double width);
    void OnChangeSampleHeight(double height);
    void OnFilpH(bool mirrored);
    void OnFilpV(bool mirrored);
    void OnApplyTexture();

private slots:
    void OnChangeRepeat();

private:
    using Pair = kiv::CVec2<float>;

    void fill();
    void fillRepeats();
    void showUnit(const QString& unit);
    void connectSignals();
    Pair pair(const char* key, float otherwise) const;
    void setPair(const char* key, const Pair& value);
    void place();
    void showTexture();

    kiv::CAppearanceLibraryManager& m_manager;
    kiv::CAppearanceInstancePtr m_texture;
    kiv::CAppearanceInstancePtr m_preview;
    std::unique_ptr<Ui::CTextureEditorDlg> m_ui;
};
