#pragma once

#include <MaterialUIExport.h>

#include <kiv/MaterialLibrary.h>

#include <QDialog>
#include <QModelIndex>

#include <functional>
#include <memory>
#include <set>
#include <string>

class AppearanceLibraryProvider;
class CAppearanceLibraryBrowserCtrl;

/// The material dialog of the standard edition: the project's library above, the system or favourite library below, and
/// beside them a preview of the selected appearance and its editor. Selecting an appearance hands it to the apply
/// reactor at once; the button "确定" announces the one to keep and closes. Escape and the window's close button
/// reject.
///
/// Appearances of an edit type of 1 or more can be edited; the others are shown read-only. A change is made in the
/// appearance at once and told by AppearanceEdited(). Ctrl+Z takes the last one back, rejecting all of them.
///
/// What changes a library (copy, delete, remove, type change, favourites) is not built yet: the browsers' context menus
/// stay closed and the buttons of the cloud are disabled, so that nothing looks as if it worked.
///
/// The search line (Ctrl+F) looks in the project's library as one types; Return also
/// looks in the library below when the project's has no match.
/// A double click applies once more and leaves the dialog open.
class MATERIALUI_EXPORT CMaterialLibraryWidget : public QDialog {
    Q_OBJECT

public:
    /// Library and provider are borrowed and must outlive the dialog; the provider may be null.
    /// `releaseOnClose`: closing frees the viewing library's textures and shader programs, of all viewers.
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
    /// The appearance was changed in the editor, or a change of it was taken back: draw anew what has it.
    void AppearanceEdited(const kiv::CAppearanceInstancePtr& appearance);

public slots:
    /// Takes back what was edited since the dialog was opened, the last edit first, and rejects.
    void OnRevocation();
    /// Closes the dialog; with QDialog::Rejected, whoever asked for that, after OnRevocation's work.
    void done(int result) override;

protected:
    // What a derived widget can replace. The order is an interface to hosts.

    /// A row of the lower table was double-clicked: applies the appearance. The dialog stays open.
    virtual void DoubleClickSystemBrowserFunc(const kiv::CAppearanceInstancePtr& appearance);
    /// The property of the key was edited; browsers and preview show it already. Empty in this edition.
    virtual void AppearancePropertyChangedFunc(const kiv::CAppearanceInstancePtr& appearance, const std::string& key);
    /// The following do nothing yet (null, false); nothing in the dialog calls them.
    virtual kiv::CAppearanceInstancePtr CopyandAddAppearanceFunc(const kiv::CAppearanceInstancePtr& appearance);
    virtual bool AddFavoriteAppearanceFunc(const kiv::CAppearanceInstancePtr& appearance, const std::string& category);
    virtual bool AddFavoriteTexturesFunc();
    virtual void SynchronizedCloudFunc();
    virtual void AppearanceDeletedFunc(const kiv::CAppearanceInstancePtr& appearance);
    virtual void AppearanceRemoveFunc(const kiv::CAppearanceInstancePtr& appearance);
    /// A new identifier for an appearance.
    virtual std::wstring NewMaterialId();
    /// Called before the reactor by everything that applies but a mere selection; empty in this edition.
    virtual void ApplyAppearance(const kiv::CAppearanceInstancePtr& appearance);

    /// Fills the user library "Favorite Library" (made when missing) from the ".json" and ".ggm" files of the folder
    /// `root`/`libraryName`, behind a modal progress dialog. What cannot be read and ids that occur twice are skipped;
    /// cancelling keeps what is loaded. Texture files that lie below the favourite library path are found there.
    void LoadApperanceLibrary(const std::wstring& root, const std::string& libraryName);

    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

protected slots:
    void OnSelectAppearance(const kiv::CAppearanceInstancePtr& appearance);
    void OnAppearancePropertyChanged(const kiv::CAppearanceInstancePtr& appearance, const kiv::String& key);
    /// Keeps the record of an edit that is about to be made.
    void OnTransformEditedData(const kiv::String& record);
    /// Takes back the last edit, if there is one.
    void OnUndo();
    /// Announces the selection of the project's library by MatApply and accepts, and the edits with it.
    void OnApply();
    /// Applies what the right-hand column shows; the dialog stays open.
    void OnApplyAppearanceButton();
    void OnSearchValueChanged(const QString& text);
    void OnSearchValueChangedSlot();
    void OnMaterialLibraryChange(const kiv::String& libraryName);
    void OnVerticalScrollBarChanged(int value);
    void OnDoubleClickTableWidget(QModelIndex index);
    /// Every 200 ms while visible, once for each time that the dialog was shown.
    void onTimerOut();
    /// 500 ms after each show: loads the favourites.
    void onJsonTimerOut();

private:
    void Initilize(AppearanceLibraryProvider* provider, bool loadTranslation);
    void showTakenBack(const std::set<kiv::CAppearanceInstancePtr>& appearances);

    struct Private;
    std::unique_ptr<Private> m;
};
