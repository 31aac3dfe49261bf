#pragma once

#include "FavoriteMirror.h"
#include "MaterialLibraryForm.h"
#include "MaterialLibraryWidget.h"

#include <QLineEdit>
#include <QPointer>
#include <QTimer>

class LoginCallback;
class QFileDialog;

/// The dialog's own state, for the files that implement it: MaterialLibraryWidget.cpp (window, selecting, editing),
/// MaterialLibraryOperations.cpp (what is done to the project's materials) and MaterialLibraryCloud.cpp (account,
/// favourites, timers).
struct CMaterialLibraryWidget::Private {
    Private(kiv::CMaterialLibrary& materials, bool release, const std::string& name, bool cloud)
        : library(materials), manager(*materials.GetMaterialManager()), projectLibraryName(name), mirror(manager),
          releaseOnClose(release), cloudEnabled(cloud)
    {
    }

    void setUpWindow(QDialog& dialog) const;
    void showLibraries();
    void connectSignals(QDialog& dialog) const;
    void connectFavorites(QDialog& dialog) const;
    void connectOperations(CMaterialLibraryWidget& dialog);
    void resetCloud() const;
    void leaveCloud() const;
    void apply(const kiv::CAppearanceInstancePtr& appearance) const;
    void show(const kiv::CAppearanceInstancePtr& appearance) const;
    void followLibrary() const;
    bool isKnown(const kiv::CAppearanceInstancePtr& appearance) const;
    QLineEdit* nameLine() const;
    void endRenaming(bool isKept);
    bool hasProject(CMaterialLibraryWidget& dialog) const;
    bool moveIntoProject(const kiv::CAppearanceInstancePtr& copy) const;
    void showInProject(const kiv::CAppearanceInstancePtr& appearance, bool isThere) const;
    kiv::String record(const kiv::CAppearanceInstance& appearance, int kind, const kiv::String& key = {}) const;
    static void changeType(kiv::CAppearanceInstance& appearance, kiv::CAppearanceInstance& fresh,
                           const kiv::String& typeName);
    QString askForArchive(CMaterialLibraryWidget& dialog, const QString& name);
    QString askForFolder(CMaterialLibraryWidget& dialog);
    QStringList askForFiles(CMaterialLibraryWidget& dialog, QFileDialog* files);
    bool ask(CMaterialLibraryWidget& dialog, const QString& question) const;
    void keepEdits();
    void showAnew(const kiv::CAppearanceInstancePtr& appearance) const;
    void showAwaited();
    void showCloudStatus(CMaterialLibraryWidget& dialog);
    void askForNewLogin(CMaterialLibraryWidget& dialog);
    void showSynchronization() const;
    void takeArrivals();
    void runRemovals() const;
    void followVisibleRows() const;
    bool needsCloud(const kiv::CAppearanceInstancePtr& appearance) const;
    bool isFavorite(const kiv::CAppearanceInstancePtr& appearance) const;
    bool areFavoritesLoaded() const;
    bool isTextureUsed(const QSet<QString>& names, const QString& name) const;
    void complainOfRemoval(CMaterialLibraryWidget& dialog, const QString& complaint);
    void tellOfRemovals(CMaterialLibraryWidget& dialog);
    void synchronizeIfPending(CMaterialLibraryWidget& dialog);
    bool isFound(const kiv::CAppearanceInstancePtr& appearance, const QString& keyword) const;
    kiv::CAppearanceLibraryPtr projectLibrary() const;
    kiv::CAppearanceInstancePtr firstAppearance() const;
    static kiv::CAppearanceInstancePtr appearanceAt(const CAppearanceLibraryBrowserCtrl& browser, int row);

    kiv::CMaterialLibrary& library;
    kiv::CAppearanceLibraryManager& manager;
    std::string projectLibraryName;
    std::function<void(const kiv::CAppearanceInstancePtr&)> reactor;
    CMaterialLibraryForm form;
    kiv::CAppearanceInstancePtr awaited;  ///< shown although textures of it are not here yet
    CFavoriteMirror mirror;
    LoginCallback* loginCallback = nullptr;
    kiv::CAppearanceLibraryPtr loadedFavorites;  ///< the library object that was filled from the disk
    /// Of a name that is edited by the menu: the editor's line, the name before, where the keyboard comes from.
    struct Renaming {
        QPointer<QLineEdit> line;
        QString before;
        QPointer<QWidget> from;
    };
    Renaming renaming;
    QString exchangeFolder;      ///< where files were brought in or sent out last
    unsigned openings = 0;       ///< that ended; what began in one of them does not go on in another
    QStringList failedRemovals;  ///< not told of yet
    QTimer statusTimer;
    QTimer favoriteLoadTimer;
    bool releaseOnClose;
    bool cloudEnabled;
    bool areFavoritesWhole = false;  ///< with all that lies on the disk
    bool isOnline = false;
    bool isSyncPending = false;  ///< asked for while nobody was logged in
};
