#pragma once

#include <MaterialUIExport.h>

#include <kiv/MaterialLibrary.h>

#include <QDialog>

#include <functional>
#include <memory>
#include <string>

class AppearanceLibraryProvider;
class CAppearanceLibraryBrowserCtrl;

/// The material dialog of the standard edition: the project's library above, the system or favourite library below, and
/// beside them the place for preview and editor. Selecting an appearance hands it to the apply reactor at once; the
/// button "确定" announces the one to keep and closes.
class MATERIALUI_EXPORT CMaterialLibraryWidget : public QDialog {
    Q_OBJECT

public:
    /// Library and provider are borrowed and must outlive the dialog; the provider may be null.
    /// `releaseOnClose`: closing frees the viewing library's textures and shader programs.
    /// `loadTranslation`: installs "materialui_zh.qm" from the application's folder.
    /// `projectLibraryName`: the user library that the upper browser shows.
    /// `cloudEnabled`: favourites are loaded and the cloud is offered.
    CMaterialLibraryWidget(AppearanceLibraryProvider* provider, kiv::CMaterialLibrary* library, bool releaseOnClose,
                           QWidget* parent, bool loadTranslation, const std::string& projectLibraryName,
                           bool cloudEnabled);
    CMaterialLibraryWidget(kiv::CMaterialLibrary* library, bool releaseOnClose, QWidget* parent, bool loadTranslation,
                           const std::string& projectLibraryName, bool cloudEnabled);
    ~CMaterialLibraryWidget() override;

    /// Selects an appearance of the project library; an id that it lacks selects nothing.
    void SetCurrentMaterial(const std::wstring& id);
    /// The id of the appearance selected in the project library, empty when none is.
    std::wstring GetCurrentMaterialID() const;
    /// Shows the project library as it now stands, after the host changed it.
    void UpdateBrowserLibrary();
    /// Called with every appearance that the user selects or applies; the function object is copied.
    void SetApplyAppearanceReactor(const std::function<void(const kiv::CAppearanceInstancePtr&)>& reactor);

signals:
    /// The id of the appearance to apply, as the dialog is accepted.
    void MatApply(QString& id);
    void OnApplyTexture();

private:
    struct Private;
    std::unique_ptr<Private> m;
};
