#include "KeyboardTour.h"

#include "MainWindow.h"
#include "TourChecks.h"
#include "TourInput.h"
#include "TourMouse.h"

#include <AppearanceLibraryBrowserCtrl.h>
#include <MaterialConstants.h>

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QTreeWidget>

using kiv::CAppearanceInstancePtr;
using TourChecks::awaitActive;
using TourChecks::awaitSettled;
using TourChecks::expect;
using TourChecks::part;

namespace {

const QString Wall = QStringLiteral("ground-wall");
const QString Roof = QStringLiteral("roof");
const QString NewName = QStringLiteral("石墙二号");
constexpr int KeyLimit = 400;  // after so many of the same key something is wrong

bool hasFocus(const QWidget& widget)
{
    const QWidget* focused = QApplication::focusWidget();
    return focused && (focused == &widget || widget.isAncestorOf(focused));
}

}  // namespace

void KeyboardTour::addSteps(std::vector<TourStep>& steps)
{
    steps.insert(steps.end(), {{"keyboard-open", [this] { open(); }},
                               {"keyboard-tab", [this] { goThrough(); }},
                               {"keyboard-copy", [this] { copy(); }},
                               {"keyboard-rename", [this] { rename(); }},
                               {"keyboard-collect", [this] { collect(); }},
                               {"keyboard-convert", [this] { convert(); }},
                               {"keyboard-export", [this] { exportMaterial(); }},
                               {"keyboard-delete", [this] { deleteUsed(); }},
                               {"keyboard-import", [this] { importMaterial(); }},
                               {"keyboard-take-back-one", [this] { takeBackOne(); }},
                               {"keyboard-cancel", [this] { cancel(); }},
                               {"keyboard-apply", [this] { apply(); }}});
}

// ---- steps

void KeyboardTour::open()
{
    awaitActive(*m_window);
    m_drawingBefore = drawing(*m_window);
    m_libraryBefore = projectLibrary();
    selectWall();
    TourInput::press(Qt::Key_F4);
    awaitOpen();
    awaitFavorites();
    expect(hasFocus(part<QLineEdit>(dialog(), "LineSearch")), "the keyboard is in the search line");
    awaitSettled(dialog());
}

/// The parts of the dialog come in the order in which one reads it, and after the last the first again.
void KeyboardTour::goThrough()
{
    const CAppearanceLibraryBrowserCtrl& project = browser("ProjectLibrary");
    const CAppearanceLibraryBrowserCtrl& system = browser("SystemLibrary");
    const std::vector<const QWidget*> stations{&part<QLineEdit>(dialog(), "LineSearch"),
                                               project.GetTreeWidget(),
                                               project.GetTableWidget(),
                                               system.findChild<QComboBox*>(),
                                               system.GetTreeWidget(),
                                               system.GetTableWidget(),
                                               &part<QComboBox>(dialog(), "shapeCombo"),
                                               &part<QLineEdit>(dialog(), "name"),
                                               &part<QPushButton>(dialog(), "pushButtonOk")};
    std::vector<const QWidget*> reached;
    QStringList passed;
    for (int i = 0; i < KeyLimit && (reached.size() < 2 || !hasFocus(*stations.front())); ++i) {
        for (const QWidget* station : stations)
            if (hasFocus(*station) && (reached.empty() || reached.back() != station))
                reached.push_back(station);
        passed.append(QApplication::focusWidget()->objectName());
        TourInput::press(Qt::Key_Tab);
    }
    expect(m_window->drawnMaterial(Wall) == m_window->document().materialOf(Wall),
           "coming past a row does not choose it");
    expect(reached == stations, "Tab leads through the parts in their order: " + passed.join(", "));
}

void KeyboardTour::copy()
{
    goToStone();
    goToMaterial("SystemLibrary", idOf(systemMaterial("Ashlar masonry")));
    TourInput::press(Qt::Key_C, Qt::ControlModifier);
    m_copy = browser("ProjectLibrary").GetCurSel();
    expect(projectLibrary().size() == m_libraryBefore.size() + 1 && !m_libraryBefore.contains(m_copy),
           "the project has a copy, which is selected");
    awaitSettled(dialog());
}

void KeyboardTour::rename()
{
    goToMaterial("ProjectLibrary", m_copy);
    TourInput::press(Qt::Key_F2);
    TourInput::type(NewName);
    m_tour.picture("name");
    TourInput::press(Qt::Key_Return);
    expect(nameInRow("ProjectLibrary", m_copy) == NewName, "the row shows the new name");
    expect(hasFocus(*browser("ProjectLibrary").GetTableWidget()), "the keyboard is back in the table");
    awaitSettled(dialog());
}

void KeyboardTour::collect()
{
    const auto favorites = m_library.GetMaterialManager()->FindUserAppearanceLibrary(FAVORITE_LIBRARY_NAME);
    const std::size_t before = favorites->count();
    const auto category = [this](QWidget& chooser) {
        const auto* radio = qobject_cast<const QRadioButton*>(chooser.focusWidget());
        expect(radio && radio->isChecked(), "the keyboard is at the category that is chosen");
        TourInput::press(Qt::Key_Down);
        m_tour.picture("category");
        expect(radio && !radio->isChecked(), "the arrows choose another one");
        TourInput::press(Qt::Key_Return);
    };
    TourInput::answerModals([] { TourInput::press(Qt::Key_D, Qt::ControlModifier); }, {category});
    awaitActive(dialog());
    expect(favorites->count() == before + 1, "there is one favourite more");
}

void KeyboardTour::convert()
{
    const auto library = m_library.GetMaterialManager()->FindUserAppearanceLibrary(CUSTOMER_LIBRARY_NAME);
    const kiv::String before = library->FindInstance(m_copy.toStdString())->GetTemplateName();
    const auto type = [this](QWidget&) {
        TourInput::press(Qt::Key_Down);
        m_tour.picture("type");
        TourInput::press(Qt::Key_Return);
    };
    const char* const entry = "typeChange";  // translated with the browser's texts, not with this program's
    TourInput::answerModals(
        [&] { chooseByArrows(QCoreApplication::translate("CAppearanceLibraryBrowserCtrl", entry)); }, {type});
    awaitActive(dialog());
    expect(library->FindInstance(m_copy.toStdString())->GetTemplateName() != before, "it has another type");
    expect(nameInRow("ProjectLibrary", m_copy) == NewName, "and its name");
    awaitSettled(dialog());
}

void KeyboardTour::exportMaterial()
{
    const auto name = [this](QWidget& files) {
        expect(hasFocus(part<QLineEdit>(files, "fileNameEdit")), "the name can be entered at once");
        TourInput::press(Qt::Key_A, Qt::ControlModifier);
        TourInput::type(exportedFile());
        m_tour.picture("file");
        TourInput::press(Qt::Key_Return);
    };
    TourInput::answerModals([] { TourInput::press(Qt::Key_E, Qt::ControlModifier); }, {name});
    awaitActive(dialog());
    expect(QFile::exists(exportedFile()), "the archive is there");
}

void KeyboardTour::deleteUsed()
{
    const CAppearanceInstancePtr used = m_window->document().materialOf(Roof);
    goToMaterial("ProjectLibrary", idOf(used));
    const auto agree = [this](QWidget& box) {
        expect(qobject_cast<QMessageBox*>(&box), "the program asks");
        TourInput::press(Qt::Key_Left);
        m_tour.picture("question");
        TourInput::press(Qt::Key_Return);
    };
    TourInput::answerModals([] { TourInput::press(Qt::Key_Delete); }, {agree});
    awaitActive(dialog());
    expect(!projectLibrary().contains(idOf(used)), "it is deleted");
    expect(m_window->drawnMaterial(Roof) == used, "the roof keeps its looks");
    awaitSettled(dialog());
}

void KeyboardTour::importMaterial()
{
    const auto before = projectLibrary().size();
    const auto name = [this](QWidget& files) {
        expect(hasFocus(part<QLineEdit>(files, "fileNameEdit")), "the name can be entered at once");
        TourInput::type(exportedFile());
        TourInput::press(Qt::Key_Return);
    };
    TourInput::answerModals([] { TourInput::press(Qt::Key_I, Qt::ControlModifier); }, {name});
    awaitActive(dialog());
    expect(projectLibrary().size() == before + 1, "the material is imported");
    expect(nameInRow("ProjectLibrary", browser("ProjectLibrary").GetCurSel()) == NewName, "and selected");
    awaitSettled(dialog());
}

void KeyboardTour::takeBackOne()
{
    const auto before = projectLibrary().size();
    TourInput::press(Qt::Key_Z, Qt::ControlModifier);
    expect(projectLibrary().size() == before - 1, "what was imported is gone again");
    awaitSettled(dialog());
}

void KeyboardTour::cancel()
{
    closeDialog(*m_window, [] { TourInput::press(Qt::Key_Escape); });
    expect(projectLibrary() == m_libraryBefore, "the project's library is byte for byte the one that it was");
    expect(drawing(*m_window) == m_drawingBefore, "the building looks as before");
}

void KeyboardTour::apply()
{
    TourInput::press(Qt::Key_F4);
    awaitOpen();
    awaitFavorites();
    goToStone();
    const CAppearanceInstancePtr chosen = systemMaterial("Travertine, filled");
    goToMaterial("SystemLibrary", idOf(chosen));
    expect(m_window->drawnMaterial(Wall) == chosen, "the wall shows what is selected");
    awaitSettled(dialog());
    m_tour.picture("chosen");
    closeDialog(*m_window, [] { TourInput::press(Qt::Key_Return); });
    expect(m_window->document().materialOf(Wall) == chosen, "the wall keeps it");
    drawing(*m_window);
}

// ---- what the steps share

void KeyboardTour::selectWall() const
{
    tabTo(m_window->elements());
    TourInput::press(Qt::Key_Home);
    goTo(
        m_window->elements(), [this] { return m_window->selectedElement() == Wall; }, Wall);
}

void KeyboardTour::tabTo(const QWidget& widget)
{
    for (int i = 0; i < KeyLimit && !hasFocus(widget); ++i)
        TourInput::press(Qt::Key_Tab);
    expect(hasFocus(widget), "Tab leads to " + widget.objectName());
}

void KeyboardTour::goTo(const QAbstractItemView& view, const std::function<bool()>& isThere, const QString& what)
{
    tabTo(view);
    if (isThere())
        return;
    TourInput::press(Qt::Key_Home, view.inherits("QTableView") ? Qt::ControlModifier : Qt::NoModifier);
    for (int i = 0; i < KeyLimit && !isThere(); ++i)
        TourInput::press(Qt::Key_Down);
    expect(isThere(), "the arrows lead to " + what);
}

void KeyboardTour::goToStone() const
{
    tabTo(*browser("SystemLibrary").findChild<QComboBox*>());
    TourInput::press(Qt::Key_Home);
    const QTreeWidget& tree = *browser("SystemLibrary").GetTreeWidget();
    const auto isStone = [&] {
        return tree.currentItem() && tree.currentItem()->data(0, Qt::UserRole).toString() == "Stone";
    };
    goTo(tree, isStone, "the stones");
    awaitSettled(dialog());
}

void KeyboardTour::goToMaterial(const char* browserName, const QString& id) const
{
    const CAppearanceLibraryBrowserCtrl& place = browser(browserName);
    goTo(
        *place.GetTableWidget(),
        [&] { return place.GetTableWidget()->currentRow() == row(browserName, id).row() && place.GetCurSel() == id; },
        "the material");
}

/// Opens the context menu of what has the keyboard and chooses the entry.
void KeyboardTour::chooseByArrows(const QString& entry) const
{
    const auto pick = [&](QMenu& menu) {
        const auto isThere = [&] {
            return menu.activeAction() && menu.activeAction()->text().remove('&').startsWith(entry);
        };
        for (int i = 0; i < KeyLimit && !isThere(); ++i)
            TourInput::press(Qt::Key_Down);
        expect(isThere(), "the arrows lead to " + entry);
        m_tour.picture("menu");
        TourInput::press(Qt::Key_Return);
    };
    TourInput::inMenu([] { TourMouse::press("Menu"); }, pick);
}

QString KeyboardTour::exportedFile() const
{
    return m_folder.filePath("石墙.ggm");
}
