#pragma once

#include <kiv/AppearanceLibraryManager.h>

#include <QWidget>

#include <memory>

class CSceneWidget;
class QToolButton;

namespace Ui {
class CAppearancePreviewerCtrl;
}

/// Shows an appearance on a body that the user can choose and turn. The point of view is kept from one appearance to
/// the next; another body is fitted.
class CAppearancePreviewerCtrl : public QWidget {
    Q_OBJECT

public:
    using CAppearanceLibraryManager = kiv::CAppearanceLibraryManager;

    /// The manager is borrowed and must outlive the widget.
    CAppearancePreviewerCtrl(kiv::CAppearanceLibraryManager& manager, QWidget* parent);
    ~CAppearancePreviewerCtrl() override;

    /// Shows the appearance as it is now; call again when it changed. Null leaves on show what is there.
    void SetAppearance(const kiv::CAppearanceInstancePtr& appearance);
    const kiv::CAppearanceInstancePtr& GetAppearance() const { return m_appearance; }

    CSceneWidget* GetSceneWidget() const;
    /// Hidden, as are all action buttons, until a host shows it.
    QToolButton* GetApplyButton() const;

signals:
    void SaveAppearance(const kiv::CAppearanceInstancePtr& pInstance);
    /// The user chose how elaborately surfaces are shaded. The manager knows already.
    void InitcurrentLod(CAppearanceLibraryManager::EnShaderLevelOfDetail);

public slots:
    /// Shows the body of the name.
    void currentIndexChanged(const QString& text);
    /// Takes the shading of the name for the manager, and with that for everything translated from now on.
    void currentLodChanged(const QString& text);
    void OnChangeBackgroundColor();
    /// Shows the buttons that work on a library beside the preview, or hides them.
    void OnShowBrowser(bool bShow);
    void OnSaveAppearance();

private:
    void setUpShapes();
    void setUpShading();
    void hideActions();
    void connectSignals();
    void setUpScene();
    void refresh();

    kiv::CAppearanceLibraryManager& m_manager;
    kiv::CAppearanceInstancePtr m_appearance;
    std::unique_ptr<Ui::CAppearancePreviewerCtrl> m_ui;
};
