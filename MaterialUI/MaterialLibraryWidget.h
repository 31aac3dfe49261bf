#pragma once

#include <AppearanceLibraryBrowserCtrl.h>
#include <MaterialUIExport.h>

#include <kiv/MaterialLibrary.h>

#include <QDialog>
#include <QModelIndex>

#include <functional>
#include <memory>
#include <set>
#include <string>

class AppearanceLibraryProvider;
class LoginCallback;

/// The material dialog of the standard edition: the project's library above, the system or favourite library below, and
/// beside them a preview of the selected appearance and its editor. Selecting an appearance hands it to the apply
/// reactor at once; the button "确定" announces the one to keep and closes. Escape and the window's close button
/// reject.
///
/// Appearances of an edit type of 1 or more can be edited; the others are shown read-only. A change is made in the
/// appearance at once and told by AppearanceEdited(). Ctrl+Z takes the last one back, rejecting all of them.
///
/// With the cloud enabled, the button "收藏" makes a favourite of the selected appearance, and "同步" sends the
/// favourites that changed to the account of the login callback and brings what other machines sent; the labels beside
/// "确定" tell how the account and the sending stand. What is in the cloud bears its mark. Without a login callback a
/// session that the host opened by Login() is used.
///
/// The browsers' context menus, and keys, copy into the project, delete, change the type, rename, collect, and bring in
/// and send out ".ggm" archives. Whatever is done to the project's materials can be taken back until "确定"; what is
/// done to the favourites cannot, so removing asks first, as deleting does when elements use the material.
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
    /// A dialog that is destroyed while it is open keeps what was edited.
    ~CMaterialLibraryWidget() override;

    /// Selects an appearance of the project library; an id that it lacks selects nothing.
    void SetCurrentMaterial(const std::wstring& id);
    /// The id of the appearance selected in the project library, empty when none is.
    std::wstring GetCurrentMaterialID() const;
    /// Shows the project library as it now stands, after the host changed it.
    void UpdateBrowserLibrary();
    /// Called with every appearance that the user selects or applies; the function object is copied.
    void SetApplyAppearanceReactor(const std::function<void(const kiv::CAppearanceInstancePtr&)>& reactor);

    /// The account's session, one for the process. All return at once; what follows a login with `notifyOnSuccess` is
    /// done by the dialogs that are open. `a`, `b` and `c` are the first texts of LoginAccountInfo.
    static void Login(QString a, QString b, QString c, QString product, bool notifyOnSuccess);
    static void Logout();
    static bool IsLogin();

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
    /// Adds an editable copy to the project library and selects it. The copy; null when there is none to make.
    virtual kiv::CAppearanceInstancePtr CopyandAddAppearanceFunc(const kiv::CAppearanceInstancePtr& appearance);
    /// Stores the appearance, with its textures, as a favourite of the category. False when there is one like it (the
    /// user is told) or it cannot be stored.
    virtual bool AddFavoriteAppearanceFunc(const kiv::CAppearanceInstancePtr& appearance, const std::string& category);
    /// Asks for the category of the selected appearance and makes a favourite of it. False when nothing is selected
    /// that is no favourite yet.
    virtual bool AddFavoriteTexturesFunc();
    /// Sends the favourites that the cloud does not have as they are here. Does nothing without a network, while such a
    /// sending is under way, and when there is nothing to send.
    virtual void SynchronizedCloudFunc();
    /// Deletes an appearance of the project library, after the user was asked if that was needed. Cancelling brings it
    /// back, as a new object of the same id, unless its edit type is 0 or 2.
    virtual void AppearanceDeletedFunc(const kiv::CAppearanceInstancePtr& appearance);
    /// Removes a favourite with its files and, as soon as that is possible, its copies in the cloud.
    virtual void AppearanceRemoveFunc(const kiv::CAppearanceInstancePtr& appearance);
    /// A new identifier for an appearance.
    virtual std::wstring NewMaterialId();
    /// Called before the reactor by everything that applies but a mere selection; empty in this edition.
    virtual void ApplyAppearance(const kiv::CAppearanceInstancePtr& appearance);
    /// The user wants the textures of an appearance that is in the cloud. Empty in this edition, which brings those of
    /// the rows on the screen by itself.
    virtual void AppearanceDownloadFunc(const QString& id);
    /// How many elements of the building use the appearance: who deletes one that is used is asked first. None in this
    /// edition, which knows no elements.
    virtual int CountAppearanceUses(const kiv::CAppearanceInstancePtr& appearance);

    /// Fills the user library "Favorite Library" (made when missing) from the ".json" and ".ggm" files of the folder
    /// `root`/`libraryName`, behind a modal progress dialog. What cannot be read and ids that occur twice are skipped;
    /// cancelling keeps what is loaded. Texture files that lie below the favourite library path are found there.
    void LoadApperanceLibrary(const std::wstring& root, const std::string& libraryName);

    /// Takes the host's hook (borrowed; null for none) and, with the cloud enabled, logs in with what it gives.
    void SetLoginCallback(LoginCallback* callback);
    /// Logs in with the account of the hook, or out when it has none. Answers whether a session is open as yet: a login
    /// that was begun ends later. False without a hook.
    bool SetLogin();
    /// SetLogin(), when the hook allows it now.
    bool MaterialLibraryLogin();
    /// List what the cloud has; what this machine lacks of it is brought and shows up by and by.
    void LoadSysLibMaterialIndex();
    void LoadFavLibMaterialJson();

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
    void OnCopyandAddApperance(const kiv::CAppearanceInstancePtr& appearance);
    void OnDeleteApperance(kiv::CAppearanceInstancePtr& appearance);
    /// Keeps the identity, all values and textures that both types have, and takes the new type's defaults for others.
    void OnAppearanceTypeChanged(kiv::CAppearanceInstancePtr& appearance, const kiv::String& typeName);
    void OnDownloadAppearance(const QString& id);
    /// Puts the keyboard into the editor's line for the name.
    void OnRenameAppearance(const kiv::CAppearanceInstancePtr& appearance);
    void OnExportAppearances(const CAppearanceLibraryBrowserCtrl::Appearances& appearances);
    void OnImportAppearances(const QStringList& files);
    void OnAddFavoriteAppearance(const kiv::CAppearanceInstancePtr& appearance, const kiv::String& category);
    void OnAddFavoriteTextures();
    void OnRemoveApperance(kiv::CAppearanceInstancePtr& appearance);
    /// Synchronises, or logs in first and synchronises when that has succeeded.
    void OnSynchronizedCloud();
    /// A login succeeded.
    void onLoginSuccessTimer();
    /// The cloud has nothing of the favourite any more.
    void onRemoveAppearance(const QString& id);
    void OnMaterialLibraryChange(const kiv::String& libraryName);
    void OnVerticalScrollBarChanged(int value);
    void OnDoubleClickTableWidget(QModelIndex index);
    /// Every 200 ms while visible, once for each time that the dialog was shown. Does nothing without the cloud.
    void onTimerOut();
    /// 500 ms after each show: loads the favourites.
    void onJsonTimerOut();

private:
    void Initilize(AppearanceLibraryProvider* provider, bool loadTranslation);
    void showTakenBack(const std::set<kiv::CAppearanceInstancePtr>& appearances);
    void addImported(const CAppearanceLibraryBrowserCtrl::Appearances& appearances);
    bool confirmDeletion(const CAppearanceLibraryBrowserCtrl::Appearances& appearances);
    bool confirmRemoval(const CAppearanceLibraryBrowserCtrl::Appearances& appearances);

    struct Private;
    std::unique_ptr<Private> m;
};
