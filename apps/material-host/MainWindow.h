#pragma once

#include "BuildingView3D.h"
#include "CloudAccount.h"
#include "ElementList.h"
#include "ElevationView.h"
#include "MaterialDrops.h"
#include "MaterialPanel.h"
#include "MaterialSession.h"
#include "ProjectDocument.h"
#include "RecentFiles.h"

#include <QMainWindow>
#include <QSettings>

class QLabel;
class QStackedWidget;
struct HostOptions;

/// The host's window: the building's elements, their elevation or their model in space, and what the selected one is
/// made of. While the material dialog is open the window shows the building, turns it and takes materials that are
/// dragged there; everything else waits until the dialog is closed.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    /// The library is borrowed, open, and outlives the window.
    MainWindow(kiv::CMaterialLibrary& library, const HostOptions& options);
    ~MainWindow() override;

    /// Opens the project; an empty path starts a new one. False when that failed, which the user was told.
    bool start(const QString& path);
    /// Tells what the material library had to leave out, if anything.
    void showReport();

    ProjectDocument& document() { return m_document; }
    ElevationView& elevation() { return *m_view; }
    BuildingView3D& view3D() { return *m_view3D; }
    bool shows3D() const;
    ElementList& elements() { return *m_list; }
    MaterialPanel& panel() { return *m_panel; }
    const TextureCache& textures() const { return m_textures; }
    const QString& selectedElement() const { return m_selected; }
    /// What the element is drawn with: while the dialog is open perhaps not yet what it has.
    kiv::CAppearanceInstancePtr drawnMaterial(const QString& elementId) const;

public slots:
    void selectElement(const QString& elementId);
    /// For the selected element; brings the dialog to the front when it is open.
    void openLibrary();
    /// Asks for the account in which favourites are mirrored.
    void openAccount();
    void show3D(bool shown);
    void newProject();
    void openProject();
    bool saveProject();
    bool saveProjectAs();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void makeWidgets();
    void makeFileMenu();
    void makeEditMenu();
    void makeMaterialMenu();
    void makeViewMenu();
    void makeViewChoice(QMenu& menu);
    void makeHelpMenu();
    void makeStatusBar();
    void connectWidgets();
    void makeDrops();
    void fillRecentMenu();

    bool openFile(const QString& path);
    bool saveTo(const QString& path);
    bool mayLeaveProject();
    QString folder() const;
    void showProject();
    void showTitle();
    void showScale();
    void zoomBy(double factor);
    void zoomToFit();
    void showElement(const QString& elementId);
    void showMaterials();
    /// All elements that have the material.
    void showMaterial(const kiv::CAppearanceInstancePtr& material);
    void startSession();
    void endSession();
    void setBlocked(bool blocked);
    void drop(const QString& elementId, const kiv::CAppearanceInstancePtr& material, QObject* source);
    QRect elementOnScreen(const QString& elementId) const;
    QString materialName(const kiv::CAppearanceInstancePtr& material) const;
    void tellRefusal(const QString& title, const QString& details);

    kiv::CMaterialLibrary& m_library;
    QString m_language;
    QString m_samplePath;
    ProjectDocument m_document;
    RecentFiles m_recent;
    CloudAccount m_account;
    QSettings m_settings;
    TextureCache m_textures;
    MaterialFill m_fill;
    ElementList* m_list = nullptr;
    QStackedWidget* m_views = nullptr;
    ElevationView* m_view = nullptr;
    BuildingView3D* m_view3D = nullptr;
    MaterialPanel* m_panel = nullptr;
    QLabel* m_scale = nullptr;
    QMenu* m_recentMenu = nullptr;
    QAction* m_libraryAction = nullptr;
    QAction* m_elevationAction = nullptr;
    QAction* m_3DAction = nullptr;
    QString m_selected;
    QList<QAction*> m_blocked;  // while the dialog is open
    QList<MaterialDrops*> m_drops;
    QPointer<MaterialSession> m_session;
};
