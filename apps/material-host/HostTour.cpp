#include "HostTour.h"

#include "CloudTour.h"
#include "EditTour.h"
#include "KeyboardTour.h"
#include "MainWindow.h"
#include "OperationsTour.h"
#include "SpaceTour.h"
#include "TourChecks.h"
#include "TourInput.h"

#include <AppearanceLibraryBrowserCtrl.h>
#include <MaterialConstants.h>
#include <MaterialHelper.h>

#include <kiv/AppearanceParser.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTableWidget>
#include <QTreeWidget>

#include <algorithm>

using kiv::CAppearanceInstancePtr;
using TourChecks::await;
using TourChecks::awaitActive;
using TourChecks::awaitSettled;
using TourChecks::expect;

namespace {

const QString Wall = QStringLiteral("ground-wall");
const QString Roof = QStringLiteral("roof");

}  // namespace

HostTour::HostTour(kiv::CMaterialLibrary& library, const HostOptions& options)
    : DialogTour(library), m_options(options), m_tour(options.tour)
{
    // Where file dialogs start when there is no project yet.
    QDir::setCurrent(m_folder.path());
    // The desktop's own file dialogs are no widgets that could be driven.
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
}

HostTour::~HostTour() = default;

int HostTour::run()
{
    std::vector<TourStep> steps{{"start", [this] { start(); }},
                                {"select-element", [this] { selectElement(); }},
                                {"open-library", [this] { openLibrary(); }},
                                {"favourites", [this] { showFavorites(); }},
                                {"system-library", [this] { showSystem(); }},
                                {"browse-category", [this] { browseCategory(); }},
                                {"sort-ascending", [this] { sort(Qt::AscendingOrder); }},
                                {"sort-descending", [this] { sort(Qt::DescendingOrder); }},
                                {"search-chinese", [this] { search(QStringLiteral("马赛克")); }},
                                {"search-tag", [this] { search("travertine"); }},
                                {"pick-material", [this] { pickMaterial(); }},
                                {"apply", [this] { apply(); }},
                                {"try-another", [this] { tryRoof(); }},
                                {"cancel", [this] { cancel(); }},
                                {"undo", [this] { undo(); }},
                                {"redo", [this] { redo(); }},
                                {"save", [this] { save(); }},
                                {"change", [this] { change(); }},
                                {"reopen", [this] { reopen(); }},
                                {"refuse-damaged", [this] { refuse(); }},
                                {"zoom", [this] { zoom(); }},
                                {"whole-building", [this] { wholeBuilding(); }}};
    m_space = std::make_unique<SpaceTour>(m_library, m_tour, m_window);
    m_edit = std::make_unique<EditTour>(m_library, m_tour, m_window);
    m_operations = std::make_unique<OperationsTour>(m_library, m_tour, m_window);
    m_keyboard = std::make_unique<KeyboardTour>(m_library, m_tour, m_window);
    m_cloud = std::make_unique<CloudTour>(m_library, m_options, m_tour, m_window);
    m_space->addSteps(steps);
    m_edit->addSteps(steps);
    m_operations->addSteps(steps);
    m_keyboard->addSteps(steps);
    m_cloud->addSteps(steps);
    keepPart(steps);
    return m_tour.run(steps);
}

// The first step makes the window.
void HostTour::keepPart(std::vector<TourStep>& steps) const
{
    const auto isLeftOut = [this](const TourStep& step) { return !step.name.startsWith(m_options.tourPart); };
    steps.erase(std::remove_if(steps.begin() + 1, steps.end(), isLeftOut), steps.end());
}

// ---- steps

void HostTour::start()
{
    expect(m_library.GetReport().empty(), "the material library was read without complaint");
    expect(m_library.GetMaterialManager()->GetSystemLibrary()->count() >= 150, "the library has 150 materials");
    collectFavorites();
    m_window = std::make_unique<MainWindow>(m_library, m_options);
    m_window->showMaximized();
    expect(m_window->start({}), "a new project starts");
    awaitActive(*m_window);
    drawing();
    expect(!m_window->isWindowModified(), "a new project has no unsaved changes");
}

void HostTour::selectElement()
{
    clickElement(Wall);
    expect(m_window->elements().currentItem() == m_window->elements().itemOf(Wall), "the list shows the wall selected");
    m_before = m_window->drawnMaterial(Wall);
    expect(m_window->document().isInProjectLibrary(m_before), "its material is one of the project");
    m_drawingBefore = drawing();
}

void HostTour::openLibrary()
{
    TourInput::press(Qt::Key_F4);
    awaitOpen();
    awaitSettled(dialog());
    expect(browser("ProjectLibrary").GetCurSel() == idOf(m_before), "the wall's material is selected in the project");
    expect(drawing() == m_drawingBefore, "opening the library changes nothing");
}

void HostTour::showFavorites()
{
    CAppearanceLibraryBrowserCtrl& system = browser("SystemLibrary");
    TourInput::choose(*system.findChild<QComboBox*>(), 1);
    await([&] { return system.GetTableWidget()->rowCount() > 3; }, "the favourites are loaded");
    expect(system.GetCurrentLibrary()->GetName() == FAVORITE_LIBRARY_NAME, "the favourites are shown");
    awaitSettled(dialog());
}

void HostTour::showSystem()
{
    CAppearanceLibraryBrowserCtrl& system = browser("SystemLibrary");
    TourInput::choose(*system.findChild<QComboBox*>(), 0);
    expect(system.GetCurrentLibrary() == m_library.GetMaterialManager()->GetSystemLibrary(),
           "the system library is shown");
    expect(system.GetTableWidget()->rowCount() >= 150, "all its materials are listed");
    awaitSettled(dialog());
}

void HostTour::browseCategory()
{
    showCategory("Stone");
    const QTableWidget& table = *browser("SystemLibrary").GetTableWidget();
    const auto library = m_library.GetMaterialManager()->GetSystemLibrary();
    for (int row = 0; row < table.rowCount(); ++row) {
        const auto shown = library->FindInstance(table.item(row, 1)->data(Qt::UserRole).toString().toStdString());
        expect(shown && shown->GetCategory().rfind("Stone", 0) == 0, "only stones are listed");
    }
}

void HostTour::sort(Qt::SortOrder order)
{
    QTableWidget& table = *browser("SystemLibrary").GetTableWidget();
    QHeaderView& header = *table.horizontalHeader();
    TourInput::click(*header.viewport(), QPoint(header.sectionViewportPosition(1) + 60, header.height() / 2));
    QStringList sorted = shownNames();
    std::sort(sorted.begin(), sorted.end());
    if (order == Qt::DescendingOrder)
        std::reverse(sorted.begin(), sorted.end());
    expect(shownNames() == sorted, "the names are in order");
    awaitSettled(dialog());
}

void HostTour::search(const QString& keyword)
{
    TourInput::click(*dialog().findChild<QLineEdit*>("LineSearch"));
    TourInput::press(Qt::Key_A, Qt::ControlModifier);
    TourInput::type(keyword);
    TourInput::press(Qt::Key_Return);
    const CAppearanceInstancePtr found = browser("SystemLibrary").GetCurrentApperance();
    expect(bool(found), "something is found");
    const kiv::String name = m_library.GetMaterialManager()->LocalizeAppearanceString(found->GetName());
    const QString text = QString::fromLocal8Bit((name + " " + found->GetTags()).c_str());
    expect(text.contains(keyword, Qt::CaseInsensitive), "what is found has the word in its name or tags");
    expect(m_window->drawnMaterial(Wall) == found, "the wall shows what was found");
    awaitSettled(dialog());
    drawing();
}

void HostTour::pickMaterial()
{
    m_picked = systemMaterial("Ashlar masonry");
    showCategory("Stone");
    const QImage others = drawing(Roof);
    clickMaterial(m_picked);
    expect(m_window->drawnMaterial(Wall) == m_picked, "the wall is drawn with the material that was clicked");
    m_drawingApplied = drawing();
    expect(drawing(Wall) != m_drawingBefore.copy(m_window->elevation().outlineOf(Wall).boundingRect().toRect()),
           "the wall looks different");
    expect(drawing(Roof) == others, "nothing else does");
    awaitSettled(dialog());
}

void HostTour::apply()
{
    closeDialog(*m_window, [this] { TourInput::click(*dialog().findChild<QPushButton*>("pushButtonOk")); });
    expect(m_window->document().materialOf(Wall) == m_picked, "the wall keeps what was shown last");
    expect(drawing() == m_drawingApplied, "it looks as it did when it was chosen");
    expect(m_window->isWindowModified(), "the project has unsaved changes");
}

void HostTour::tryRoof()
{
    clickElement(Roof);
    TourInput::click(*m_window->panel().libraryButton());
    awaitOpen();
    const QImage before = drawing(Roof);
    showCategory("Roof");
    clickMaterial(systemMaterial("Slate roofing"));
    expect(drawing(Roof) != before, "the roof looks different");
    awaitSettled(dialog());
}

void HostTour::cancel()
{
    closeDialog(*m_window, [] { TourInput::press(Qt::Key_Escape); });
    expect(drawing() == m_drawingApplied, "everything looks as before");
    expect(m_window->document().isInProjectLibrary(m_window->document().materialOf(Roof)), "the roof has its own");
}

void HostTour::undo()
{
    TourInput::press(Qt::Key_Z, Qt::ControlModifier);
    expect(m_window->document().materialOf(Wall) == m_before, "the wall has its first material again");
    expect(drawing() == m_drawingBefore, "everything looks as in the beginning");
    expect(!m_window->isWindowModified(), "nothing is left to save");
}

void HostTour::redo()
{
    TourInput::press(Qt::Key_Y, Qt::ControlModifier);
    expect(m_window->document().materialOf(Wall) == m_picked, "the wall has the new material again");
    expect(drawing() == m_drawingApplied, "it looks as it did");
}

void HostTour::save()
{
    const QString path = m_folder.filePath("house.json");
    TourInput::answerModals([] { TourInput::press(Qt::Key_S, Qt::ControlModifier); },
                            {[&](QWidget& fileDialog) { TourInput::enterFile(fileDialog, path); }});
    expect(QFile::exists(path), "the project's file is there");
    expect(!m_window->isWindowModified(), "the project has no unsaved changes");
    m_drawingSaved = drawing();
    m_documentsSaved = documents();
}

void HostTour::change()
{
    const QString upper = "upper-wall";
    TourInput::doubleClick(m_window->elevation(), pointIn(upper));
    awaitOpen();
    showCategory("Brick");
    clickMaterial(systemMaterial("Yellow facing brick, Flemish bond"));
    awaitSettled(dialog());
    closeDialog(*m_window, [this] { TourInput::click(*dialog().findChild<QPushButton*>("pushButtonOk")); });
    expect(drawing() != m_drawingSaved, "the upper wall looks different");
    expect(documents() != m_documentsSaved, "the project is another one");
}

void HostTour::reopen()
{
    const auto discard = [this](QWidget& box) {
        m_tour.picture("question");
        auto* question = qobject_cast<QMessageBox*>(&box);
        expect(question, "the program asks about unsaved changes");
        TourInput::click(*question->button(QMessageBox::Discard));
    };
    const auto choose = [this](QWidget& fileDialog) {
        TourInput::enterFile(fileDialog, m_folder.filePath("house.json"));
    };
    TourInput::answerModals([] { TourInput::press(Qt::Key_O, Qt::ControlModifier); }, {discard, choose});
    awaitActive(*m_window);
    expect(documents() == m_documentsSaved, "every element has the material that was saved");
    expect(drawing() == m_drawingSaved, "the building looks as it did when it was saved");
    expect(!m_window->isWindowModified(), "nothing is left to save");
}

void HostTour::refuse()
{
    const QString path = m_folder.filePath("damaged.json");
    QFile saved(m_folder.filePath("house.json"));
    QFile damaged(path);
    expect(saved.open(QIODevice::ReadOnly) && damaged.open(QIODevice::WriteOnly), "a damaged file can be made");
    damaged.write(saved.read(saved.size() / 2));
    damaged.close();
    const auto choose = [&](QWidget& fileDialog) { TourInput::enterFile(fileDialog, path); };
    const auto acknowledge = [this](QWidget& box) {
        expect(qobject_cast<QMessageBox*>(&box), "the program says why it cannot be opened");
        m_tour.picture("reason");
        TourInput::press(Qt::Key_Return);
    };
    TourInput::answerModals([] { TourInput::press(Qt::Key_O, Qt::ControlModifier); }, {choose, acknowledge});
    awaitActive(*m_window);
    expect(documents() == m_documentsSaved, "the open project stays as it is");
    expect(drawing() == m_drawingSaved, "it looks as it did");
}

void HostTour::zoom()
{
    const double before = m_window->elevation().pixelsPerMetre();
    for (int i = 0; i < 4; ++i)
        TourInput::press(Qt::Key_Plus, Qt::ControlModifier);
    expect(m_window->elevation().pixelsPerMetre() > before * 2, "the drawing is larger");
    drawing();
    TourInput::hover(m_window->elevation(), pointIn("door"));
}

void HostTour::wholeBuilding()
{
    TourInput::press(Qt::Key_0, Qt::ControlModifier);
    expect(drawing() == m_drawingSaved, "the whole building is shown again");
}

// ---- what the steps share

/// A user who comes back has collected something.
void HostTour::collectFavorites()
{
    for (const char* name : {"Red facing brick, running bond", "Oak, oiled", "Walnut, satin", "Travertine, filled",
                             "Light terrazzo", "Glass mosaic, blue", "Damask wallpaper, gold"}) {
        const CAppearanceInstancePtr material = systemMaterial(name);
        const kiv::String type = material->GetTemplateName();
        expect(bool(kiv::CMaterialHelper::AddFavorite(material, type, *m_library.GetMaterialManager(), &m_library)),
               QString("%1 can be collected").arg(name));
    }
}

void HostTour::clickElement(const QString& elementId)
{
    TourInput::click(m_window->elevation(), pointIn(elementId));
    expect(m_window->selectedElement() == elementId, "the click selects " + elementId);
}

/// A point that shows the element and nothing in front of it, near the middle of the view.
QPoint HostTour::pointIn(const QString& elementId) const
{
    const ElevationView& view = m_window->elevation();
    const QRect area = view.outlineOf(elementId).boundingRect().toRect().intersected(view.rect());
    for (int y = area.center().y(); y < area.bottom(); y += 3)
        for (int x = area.center().x(); x < area.right(); x += 3)
            if (view.elementAt({x, y}) == elementId)
                return {x, y};
    throw TourFailure(elementId + " is not to be seen");
}

QStringList HostTour::shownNames() const
{
    const QTableWidget& table = *browser("SystemLibrary").GetTableWidget();
    QStringList names;
    for (int row = 0; row < table.rowCount(); ++row)
        names.append(table.item(row, 1)->text());
    return names;
}

QImage HostTour::drawing()
{
    return DialogTour::drawing(*m_window);
}

QImage HostTour::drawing(const QString& elementId)
{
    return drawing().copy(m_window->elevation().outlineOf(elementId).boundingRect().toRect());
}

HostTour::Documents HostTour::documents() const
{
    const kiv::CAppearanceParser parser(*m_library.GetMaterialManager());
    Documents documents;
    for (const BuildingElement& element : m_window->document().building().elements)
        if (element.takesMaterial())
            documents[element.id] = parser.AppearanceToString(m_window->document().materialOf(element.id));
    return documents;
}
