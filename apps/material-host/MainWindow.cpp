#include "MainWindow.h"

#include "CloudAccountDialog.h"
#include "HostOptions.h"

#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>

using kiv::CAppearanceInstancePtr;

namespace {

const QString View3DKey = QStringLiteral("view3D");

}  // namespace

MainWindow::MainWindow(kiv::CMaterialLibrary& library, const HostOptions& options)
    : m_library(library), m_language(options.language), m_samplePath(options.sampleProject()),
      m_document(library, options.language), m_recent(options.profile), m_account(options),
      m_settings(options.profile + "/material-host.ini", QSettings::IniFormat),
      m_fill(*library.GetMaterialManager(), m_textures)
{
    resize(1280, 800);
    makeWidgets();
    makeFileMenu();
    makeEditMenu();
    makeMaterialMenu();
    makeViewMenu();
    makeHelpMenu();
    makeStatusBar();
    connectWidgets();
    makeDrops();
    show3D(m_settings.value(View3DKey).toBool());
}

MainWindow::~MainWindow() = default;

void MainWindow::makeWidgets()
{
    m_list = new ElementList;
    m_list->setObjectName("elements");
    m_view = new ElevationView(
        m_fill, [this](const QString& elementId) { return drawnMaterial(elementId); },
        [this](const BuildingElement& element) {
            return element.name + " · " + materialName(drawnMaterial(element.id));
        });
    m_view->setObjectName("elevation");
    m_view3D = new BuildingView3D(*m_library.GetMaterialManager(),
                                  [this](const QString& elementId) { return drawnMaterial(elementId); });
    m_view3D->setObjectName("building3D");
    m_views = new QStackedWidget;
    m_views->addWidget(m_view);
    m_views->addWidget(m_view3D);
    m_panel = new MaterialPanel(*m_library.GetMaterialManager(), m_fill);
    auto* splitter = new QSplitter;
    splitter->addWidget(m_list);
    splitter->addWidget(m_views);
    splitter->addWidget(m_panel);
    splitter->setStretchFactor(1, 1);
    splitter->setChildrenCollapsible(false);
    splitter->setHandleWidth(1);
    setCentralWidget(splitter);
    m_list->setFocus();
}

void MainWindow::makeFileMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&File"));
    m_blocked.append(menu->menuAction());
    menu->addAction(tr("&New"), this, &MainWindow::newProject, QKeySequence::New);
    menu->addAction(tr("&Open..."), this, &MainWindow::openProject, QKeySequence::Open);
    m_recentMenu = menu->addMenu(tr("Open &Recent"));
    menu->addSeparator();
    menu->addAction(tr("&Save"), this, &MainWindow::saveProject, QKeySequence::Save);
    menu->addAction(tr("Save &As..."), this, &MainWindow::saveProjectAs, QKeySequence("Ctrl+Shift+S"));
    menu->addSeparator();
    menu->addAction(tr("&Quit"), this, &MainWindow::close, QKeySequence("Ctrl+Q"));
    connect(m_recentMenu, &QMenu::aboutToShow, this, &MainWindow::fillRecentMenu);
}

void MainWindow::makeEditMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&Edit"));
    m_blocked.append(menu->menuAction());
    QAction* undo = m_document.undoStack().createUndoAction(this, tr("&Undo"));
    undo->setShortcut(QKeySequence::Undo);
    QAction* redo = m_document.undoStack().createRedoAction(this, tr("&Redo"));
    redo->setShortcuts({QKeySequence("Ctrl+Y"), QKeySequence("Ctrl+Shift+Z")});
    menu->addActions({undo, redo});
}

void MainWindow::makeMaterialMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&Material"));
    m_libraryAction = menu->addAction(tr("Material &Library..."), this, &MainWindow::openLibrary, QKeySequence("F4"));
    m_libraryAction->setEnabled(false);
    m_blocked.append(menu->addAction(tr("Cloud &Account..."), this, &MainWindow::openAccount));
}

void MainWindow::makeViewMenu()
{
    constexpr double step = 1.25;
    QMenu* menu = menuBar()->addMenu(tr("&View"));
    makeViewChoice(*menu);
    menu->addSeparator();
    QAction* in = menu->addAction(tr("Zoom &In"), this, [this] { zoomBy(step); });
    in->setShortcuts({QKeySequence("Ctrl++"), QKeySequence("Ctrl+=")});
    menu->addAction(
        tr("Zoom &Out"), this, [this] { zoomBy(1 / step); }, QKeySequence("Ctrl+-"));
    menu->addAction(tr("&Whole Building"), this, &MainWindow::zoomToFit, QKeySequence("Ctrl+0"));
}

void MainWindow::makeViewChoice(QMenu& menu)
{
    m_elevationAction = menu.addAction(
        tr("&Elevation"), this, [this] { show3D(false); }, QKeySequence("Ctrl+1"));
    m_3DAction = menu.addAction(
        tr("&3D view"), this, [this] { show3D(true); }, QKeySequence("Ctrl+2"));
    auto* group = new QActionGroup(this);
    for (QAction* action : {m_elevationAction, m_3DAction}) {
        action->setCheckable(true);
        group->addAction(action);
    }
}

void MainWindow::makeHelpMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&Help"));
    menu->addAction(tr("&About"), this, [this] {
        QMessageBox::about(this, tr("About"),
                           tr("A small building whose elements take materials: the demo host of the material library, "
                              "version %1.")
                               .arg(QCoreApplication::applicationVersion()));
    });
}

void MainWindow::makeStatusBar()
{
    m_scale = new QLabel(this);
    statusBar()->addPermanentWidget(m_scale);
    statusBar()->addWidget(
        new QLabel(tr("Click a part to select it; double-click it or press F4 for its materials."), this));
}

void MainWindow::connectWidgets()
{
    connect(m_list, &ElementList::elementSelected, this, &MainWindow::selectElement);
    connect(m_list, &ElementList::elementActivated, this, &MainWindow::openLibrary);
    connect(m_view, &ElevationView::elementClicked, this, &MainWindow::selectElement);
    connect(m_view, &ElevationView::elementDoubleClicked, this, &MainWindow::openLibrary);
    connect(m_view, &ElevationView::zoomed, this, &MainWindow::showScale);
    connect(m_view3D, &BuildingView3D::elementClicked, this, &MainWindow::selectElement);
    connect(m_view3D, &BuildingView3D::elementDoubleClicked, this, &MainWindow::openLibrary);
    connect(m_view3D, &BuildingView3D::zoomed, this, &MainWindow::showScale);
    connect(m_panel, &MaterialPanel::libraryRequested, this, &MainWindow::openLibrary);
    connect(&m_textures, &TextureCache::arrived, this, &MainWindow::showMaterials);
    connect(&m_document, &ProjectDocument::reset, this, &MainWindow::showProject);
    connect(&m_document, &ProjectDocument::materialChanged, this, &MainWindow::showElement);
    connect(&m_document, &ProjectDocument::modifiedChanged, this, &MainWindow::showTitle);
}

void MainWindow::makeDrops()
{
    m_drops = {
        new MaterialDrops(*m_view, m_library, [this](const QPoint& pixel) { return m_view->elementAt(pixel); }),
        new MaterialDrops(*m_view3D, m_library, [this](const QPoint& pixel) { return m_view3D->elementAt(pixel); })};
    connect(m_drops[0], &MaterialDrops::hovered, m_view, &ElevationView::showDropTarget);
    connect(m_drops[1], &MaterialDrops::hovered, m_view3D, &BuildingView3D::showDropTarget);
    for (const MaterialDrops* drops : m_drops)
        connect(drops, &MaterialDrops::dropped, this, &MainWindow::drop);
}

bool MainWindow::start(const QString& path)
{
    if (!path.isEmpty() && openFile(path))
        return true;
    if (m_document.startNew(m_samplePath))
        return path.isEmpty();
    tellRefusal(tr("The sample project cannot be opened."), m_document.reason());
    return false;
}

void MainWindow::showReport()
{
    const kiv::CParseReport& report = m_library.GetReport();
    if (report.empty())
        return;
    QStringList lines;
    for (const kiv::CParseError& error : report)
        lines.append(QString::fromLocal8Bit(error.Text().c_str()));
    auto* box = new QMessageBox(
        QMessageBox::Warning, tr("Material library"),
        tr("%n part(s) of the material library could not be read and were left out.", nullptr, int(report.size())),
        QMessageBox::Ok, this);
    box->setDetailedText(lines.join('\n'));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

// ---- projects

void MainWindow::newProject()
{
    if (mayLeaveProject() && !m_document.startNew(m_samplePath))
        tellRefusal(tr("The sample project cannot be opened."), m_document.reason());
}

void MainWindow::openProject()
{
    if (!mayLeaveProject())
        return;
    const QString path = QFileDialog::getOpenFileName(this, tr("Open Project"), folder(), tr("Projects (*.json)"));
    if (!path.isEmpty())
        openFile(path);
}

bool MainWindow::openFile(const QString& path)
{
    if (m_document.open(path)) {
        m_recent.add(path);
        return true;
    }
    m_recent.remove(path);
    tellRefusal(tr("The project cannot be opened."), m_document.reason());
    return false;
}

bool MainWindow::saveProject()
{
    return m_document.path().isEmpty() ? saveProjectAs() : saveTo(m_document.path());
}

bool MainWindow::saveProjectAs()
{
    QFileDialog dialog(this, tr("Save Project"), folder(), tr("Projects (*.json)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix("json");
    return dialog.exec() == QDialog::Accepted && saveTo(dialog.selectedFiles().value(0));
}

bool MainWindow::saveTo(const QString& path)
{
    if (!m_document.save(path)) {
        tellRefusal(tr("The project cannot be saved."), m_document.reason());
        return false;
    }
    m_recent.add(path);
    showTitle();
    return true;
}

/// Where file dialogs start.
QString MainWindow::folder() const
{
    if (!m_document.path().isEmpty())
        return QFileInfo(m_document.path()).absolutePath();
    const QString recent = m_recent.list().value(0);
    return recent.isEmpty() ? QString() : QFileInfo(recent).absolutePath();
}

bool MainWindow::mayLeaveProject()
{
    if (!m_document.isModified())
        return true;
    const auto answer =
        QMessageBox::question(this, tr("Unsaved changes"), tr("Save the changes to this project?"),
                              QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    return answer == QMessageBox::Save ? saveProject() : answer == QMessageBox::Discard;
}

void MainWindow::fillRecentMenu()
{
    m_recentMenu->clear();
    for (const QString& path : m_recent.list())
        m_recentMenu->addAction(QDir::toNativeSeparators(path), this, [this, path] {
            if (mayLeaveProject())
                openFile(path);
        });
    if (m_recentMenu->isEmpty())
        m_recentMenu->addAction(tr("None"))->setEnabled(false);
}

void MainWindow::tellRefusal(const QString& title, const QString& details)
{
    QMessageBox box(QMessageBox::Warning, tr("Material Host"), title, QMessageBox::Ok, this);
    box.setInformativeText(details);
    box.exec();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (m_session)
        m_session->cancel();
    event->setAccepted(mayLeaveProject());
}

// ---- what is shown

void MainWindow::showProject()
{
    m_list->setBuilding(m_document.building());
    m_view->setBuilding(m_document.building());
    m_view3D->setBuilding(m_document.building());
    selectElement({});
    showMaterials();
    showTitle();
    showScale();
}

void MainWindow::showTitle()
{
    const QString file = m_document.path().isEmpty() ? tr("Untitled") : QFileInfo(m_document.path()).fileName();
    setWindowTitle(tr("%1[*] - %2 - Material Host").arg(file, m_document.building().name));
    setWindowModified(m_document.isModified());
}

void MainWindow::showScale()
{
    const double pixels = shows3D() ? m_view3D->pixelsPerMetre() : m_view->pixelsPerMetre();
    m_scale->setText(tr("1 m = %1 pixels").arg(qRound(pixels)));
}

bool MainWindow::shows3D() const
{
    return m_views->currentWidget() == m_view3D;
}

void MainWindow::show3D(bool shown)
{
    m_views->setCurrentIndex(shown ? 1 : 0);
    (shown ? m_3DAction : m_elevationAction)->setChecked(true);
    m_settings.setValue(View3DKey, shown);
    showScale();
}

void MainWindow::zoomBy(double factor)
{
    if (shows3D())
        m_view3D->zoomBy(factor);
    else
        m_view->zoomBy(factor);
}

void MainWindow::zoomToFit()
{
    if (shows3D())
        m_view3D->zoomToFit();
    else
        m_view->zoomToFit();
}

void MainWindow::selectElement(const QString& elementId)
{
    if (m_session)
        return;
    m_selected = elementId;
    m_list->select(elementId);
    m_view->select(elementId);
    m_view3D->select(elementId);
    m_libraryAction->setEnabled(!elementId.isEmpty());
    showElement(elementId);
}

void MainWindow::showElement(const QString& elementId)
{
    m_view->refresh();
    m_view3D->refresh(elementId);
    const CAppearanceInstancePtr material = drawnMaterial(elementId);
    if (material)
        m_list->setSwatch(elementId, MaterialSwatch(m_fill).picture(*material, m_list->iconSize(), devicePixelRatioF()),
                          materialName(material));
    if (elementId != m_selected)
        return;
    const BuildingElement* element = m_document.building().find(elementId);
    m_panel->show(element ? element->name : QString(), material, m_document.sourceOf(material));
}

void MainWindow::showMaterials()
{
    for (const BuildingElement& element : m_document.building().elements)
        if (element.takesMaterial())
            showElement(element.id);
}

void MainWindow::showMaterial(const CAppearanceInstancePtr& material)
{
    for (const BuildingElement& element : m_document.building().elements)
        if (element.takesMaterial() && drawnMaterial(element.id) == material)
            showElement(element.id);
}

CAppearanceInstancePtr MainWindow::drawnMaterial(const QString& elementId) const
{
    const CAppearanceInstancePtr shown = m_session ? m_session->shownOn(elementId) : nullptr;
    return shown ? shown : m_document.materialOf(elementId);
}

QString MainWindow::materialName(const CAppearanceInstancePtr& material) const
{
    if (!material)
        return {};
    const kiv::String shown = m_library.GetMaterialManager()->LocalizeAppearanceString(material->GetName());
    return QString::fromLocal8Bit(shown.c_str());
}

// ---- materials

void MainWindow::openLibrary()
{
    if (m_session)
        m_session->bringToFront();
    else if (m_document.materialOf(m_selected))
        startSession();
}

void MainWindow::startSession()
{
    m_session = new MaterialSession(m_library, m_document, m_selected, m_account, m_language == "zh", this);
    connect(m_session, &MaterialSession::shown, this, &MainWindow::showElement);
    connect(m_session, &MaterialSession::edited, this, &MainWindow::showMaterial);
    connect(m_session, &MaterialSession::closed, this, &MainWindow::endSession);
    setBlocked(true);
    m_session->open(elementOnScreen(m_selected));
}

void MainWindow::endSession()
{
    m_session.clear();
    setBlocked(false);
    // What was edited is put back with what was tried.
    showMaterials();
    m_document.noticeLibraryChanges();
}

void MainWindow::setBlocked(bool blocked)
{
    m_list->setEnabled(!blocked);
    for (QAction* action : m_blocked)
        action->setEnabled(!blocked);
    for (MaterialDrops* drops : m_drops)
        drops->setEnabled(blocked);
}

void MainWindow::drop(const QString& elementId, const CAppearanceInstancePtr& material, QObject* source)
{
    if (m_session)
        m_session->drop(elementId, material, source);
}

void MainWindow::openAccount()
{
    auto* dialog = new CloudAccountDialog(m_account, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

QRect MainWindow::elementOnScreen(const QString& elementId) const
{
    const QRect inView = shows3D() ? m_view3D->placeOf(elementId)
                                   : m_view->outlineOf(elementId).boundingRect().toRect().intersected(m_view->rect());
    return {m_views->mapToGlobal(inView.topLeft()), inView.size()};
}
