#include "OperationsTour.h"

#include "MainWindow.h"
#include "TourChecks.h"
#include "TourInput.h"
#include "TourMouse.h"

#include <AppearanceLibraryBrowserCtrl.h>
#include <FavoriteCategoryDlg.h>
#include <MaterialConstants.h>

#include <QComboBox>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileSystemModel>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QStatusBar>
#include <QTableWidget>

using kiv::CAppearanceInstancePtr;
using TourChecks::await;
using TourChecks::awaitActive;
using TourChecks::awaitSettled;
using TourChecks::expect;
using TourChecks::part;

namespace {

const QString Wall = QStringLiteral("ground-wall");
const QString Roof = QStringLiteral("roof");
const QString NewName = QStringLiteral("石墙一号");

/// As the browsers' menus show it.
QString entry(const char* text)
{
    return QCoreApplication::translate("CAppearanceLibraryBrowserCtrl", text);
}

QAbstractButton& buttonOf(QWidget& modal, QMessageBox::StandardButton which)
{
    auto* box = qobject_cast<QMessageBox*>(&modal);
    QAbstractButton* button = box ? box->button(which) : nullptr;
    if (!button)
        throw TourFailure("the question has no such answer");
    return *button;
}

void acceptDialog(QWidget& chooser)
{
    auto* buttons = chooser.findChild<QDialogButtonBox*>();
    if (!buttons)
        throw TourFailure("the chooser has no buttons");
    TourInput::click(*buttons->button(QDialogButtonBox::Ok));
}

}  // namespace

void OperationsTour::addSteps(std::vector<TourStep>& steps)
{
    steps.insert(steps.end(), {{"operations-open", [this] { open(); }},
                               {"operations-copy", [this] { copy(); }},
                               {"operations-rename", [this] { rename(); }},
                               {"operations-collect", [this] { collect(); }},
                               {"operations-collect-again", [this] { collectAgain(); }},
                               {"operations-convert", [this] { convert(); }},
                               {"operations-export", [this] { exportMaterial(); }},
                               {"operations-delete-used", [this] { deleteUsed(); }},
                               {"operations-delete-unused", [this] { deleteUnused(); }},
                               {"operations-import", [this] { importMaterial(); }},
                               {"operations-remove-favourites", [this] { removeFavorites(); }},
                               {"operations-drag", [this] { dragToElevation(); }},
                               {"operations-drag-in-space", [this] { dragToSpace(); }},
                               {"operations-drop-file", [this] { dropFile(); }},
                               {"operations-take-back-one", [this] { takeBackOne(); }},
                               {"operations-cancel", [this] { cancel(); }},
                               {"operations-keep-copy", [this] { keepCopy(); }}});
}

// ---- steps

void OperationsTour::open()
{
    TourInput::press(Qt::Key_1, Qt::ControlModifier);
    await([this] { return m_window->elevation().isVisible(); }, "the elevation is shown");
    m_drawingBefore = drawing(*m_window);
    m_window->elements().scrollToItem(m_window->elements().itemOf(Wall));
    TourInput::click(*m_window->elements().viewport(),
                     m_window->elements().visualItemRect(m_window->elements().itemOf(Wall)).center());
    expect(m_window->selectedElement() == Wall, "the wall is selected");
    TourInput::press(Qt::Key_F4);
    awaitOpen();
    awaitFavorites();
    TourInput::choose(*browser("SystemLibrary").findChild<QComboBox*>(), 0);
    showCategory("Stone");
    m_libraryBefore = projectLibrary();
    expect(!m_window->elements().isEnabled(), "no other element can be selected meanwhile");
}

void OperationsTour::copy()
{
    choose("SystemLibrary", idOf(systemMaterial("Ashlar masonry")), entry("copy"), "menu");
    m_copy = browser("ProjectLibrary").GetCurSel();
    expect(projectLibrary().size() == m_libraryBefore.size() + 1, "the project has one more");
    expect(!m_libraryBefore.contains(m_copy) && row("ProjectLibrary", m_copy).isValid(), "the copy is selected");
    expect(m_window->drawnMaterial(Wall)->GetId() == m_copy.toStdString(), "the wall shows it");
    awaitSettled(dialog());
}

void OperationsTour::rename()
{
    TourInput::clickItem(*browser("ProjectLibrary").GetTableWidget(), row("ProjectLibrary", m_copy));
    TourInput::press(Qt::Key_F2);
    TourInput::press(Qt::Key_A, Qt::ControlModifier);
    TourInput::type(NewName);
    TourInput::press(Qt::Key_Return);
    expect(nameInRow("ProjectLibrary", m_copy) == NewName, "the row shows the new name");
    awaitSettled(dialog());
}

void OperationsTour::collect()
{
    const std::size_t before = favorites()->count();
    const auto file = [this](QWidget& chooser) {
        m_tour.picture("category");
        expect(qobject_cast<CFavoriteCategoryDlg*>(&chooser), "the category is asked for");
        acceptDialog(chooser);
    };
    TourInput::answerModals([&] { choose("ProjectLibrary", m_copy, entry("addFavorite"), "menu"); }, {file});
    awaitActive(dialog());
    expect(favorites()->count() == before + 1, "there is one favourite more");
}

void OperationsTour::collectAgain()
{
    const std::size_t before = favorites()->count();
    const auto acknowledge = [this](QWidget& box) {
        m_tour.picture("duplicate");
        TourInput::click(buttonOf(box, QMessageBox::Ok));
    };
    TourInput::answerModals([&] { choose("ProjectLibrary", m_copy, entry("addFavorite")); },
                            {acceptDialog, acknowledge});
    awaitActive(dialog());
    expect(favorites()->count() == before, "it is not collected twice");
}

void OperationsTour::convert()
{
    const auto convert = [this](QWidget& chooser) {
        auto& types = part<QComboBox>(chooser, "comboBox");
        TourInput::choose(types, types.findData("Metal"));
        m_tour.picture("type");
        acceptDialog(chooser);
    };
    TourInput::answerModals([&] { choose("ProjectLibrary", m_copy, entry("typeChange")); }, {convert});
    awaitActive(dialog());
    expect(projectMaterial(m_copy)->GetTemplateName() == "Metal", "it is a metal now");
    expect(nameInRow("ProjectLibrary", m_copy) == NewName, "of the same name");
    awaitSettled(dialog());
}

void OperationsTour::exportMaterial()
{
    const auto name = [this](QWidget& files) {
        m_tour.picture("file");
        TourInput::enterFile(files, exportedFile());
    };
    TourInput::answerModals([&] { choose("ProjectLibrary", m_copy, entry("Export...")); }, {name});
    awaitActive(dialog());
    expect(QFile::exists(exportedFile()), "the archive is there");
}

void OperationsTour::deleteUsed()
{
    const QImage before = drawing(*m_window);
    const CAppearanceInstancePtr used = m_window->document().materialOf(Roof);
    const QString id = idOf(used);
    TourInput::clickItem(*browser("ProjectLibrary").GetTableWidget(), row("ProjectLibrary", id));
    const auto refuse = [this](QWidget& box) {
        m_tour.picture("question");
        TourInput::click(buttonOf(box, QMessageBox::No));
    };
    TourInput::answerModals([] { TourInput::press(Qt::Key_Delete); }, {refuse});
    awaitActive(dialog());
    expect(projectLibrary().contains(id), "it is still there");
    const auto agree = [](QWidget& box) { TourInput::click(buttonOf(box, QMessageBox::Yes)); };
    TourInput::answerModals([&] { choose("ProjectLibrary", id, entry("delete")); }, {agree});
    awaitActive(dialog());
    expect(!projectLibrary().contains(id), "it is deleted");
    expect(m_window->drawnMaterial(Roof) == used, "the roof keeps its looks");
    awaitSettled(dialog());
}

void OperationsTour::deleteUnused()
{
    TourInput::clickItem(*browser("ProjectLibrary").GetTableWidget(), row("ProjectLibrary", m_copy));
    TourInput::press(Qt::Key_Delete);
    expect(!projectLibrary().contains(m_copy), "what nothing uses is deleted without a question");
    awaitSettled(dialog());
}

void OperationsTour::importMaterial()
{
    const Documents before = projectLibrary();
    QTableWidget& table = *browser("ProjectLibrary").GetTableWidget();
    const auto name = [this](QWidget& files) {
        m_tour.picture("file");
        TourInput::enterFile(files, exportedFile());
    };
    const auto choose = [](QMenu& menu) { TourInput::clickEntry(menu, entry("Import...")); };
    TourInput::answerModals(
        [&] { TourInput::inMenu([&] { TourInput::rightClickItem(table, table.model()->index(0, 1)); }, choose); },
        {name});
    awaitActive(dialog());
    m_copy = browser("ProjectLibrary").GetCurSel();
    expect(projectLibrary().size() == before.size() + 1 && nameInRow("ProjectLibrary", m_copy) == NewName,
           "the material is back");
    awaitSettled(dialog());
}

void OperationsTour::removeFavorites()
{
    TourInput::choose(*browser("SystemLibrary").findChild<QComboBox*>(), 1);
    QTableWidget& table = *browser("SystemLibrary").GetTableWidget();
    const std::size_t before = favorites()->count();
    await([&] { return table.rowCount() == int(before); }, "the favourites are shown");
    for (int i = 0; i < 3; ++i)
        TourInput::clickItem(table, table.model()->index(i, 1), i ? Qt::ControlModifier : Qt::NoModifier);
    const auto agree = [this](QWidget& box) {
        m_tour.picture("question");
        TourInput::click(buttonOf(box, QMessageBox::Yes));
    };
    TourInput::answerModals([] { TourInput::press(Qt::Key_Delete); }, {agree});
    awaitActive(dialog());
    expect(favorites()->count() == before - 3, "three favourites are gone after one question");
    awaitSettled(dialog());
}

void OperationsTour::dragToElevation()
{
    const QImage before = drawing(*m_window);
    TourInput::choose(*browser("SystemLibrary").findChild<QComboBox*>(), 0);
    showCategory("Roof");
    const CAppearanceInstancePtr onWall = m_window->drawnMaterial(Wall);
    dragToRoof(m_window->elevation(), systemMaterial("Slate roofing"));
    expect(m_window->drawnMaterial(Wall) == onWall, "the wall is left alone");
    expect(drawing(*m_window) != before, "the roof looks different");
    awaitSettled(dialog());
}

void OperationsTour::dragToSpace()
{
    pressInWindow(Qt::Key_2);
    await([this] { return m_window->view3D().isVisible(); }, "the building is shown in space");
    TourChecks::settledOnScreen(m_window->view3D());
    dragToRoof(m_window->view3D(), systemMaterial("Extensive green roof"));
    TourChecks::settledOnScreen(m_window->view3D());
    pressInWindow(Qt::Key_1);
}

void OperationsTour::dropFile()
{
    const Documents before = projectLibrary();
    QFileSystemModel model;
    QListView folder;
    folder.setWindowTitle(m_folder.path());
    folder.setModel(&model);
    folder.setDragEnabled(true);
    folder.setRootIndex(model.setRootPath(m_folder.path()));
    folder.setGeometry(40, 420, 320, 160);
    folder.show();
    awaitActive(folder);
    const auto listed = [&] {
        return model.index(exportedFile()).isValid() && folder.visualRect(model.index(exportedFile())).isValid();
    };
    await(listed, "the file manager shows the archive");
    QWidget& table = *browser("ProjectLibrary").GetTableWidget()->viewport();
    TourMouse::drag(*folder.viewport(), folder.visualRect(model.index(exportedFile())).center(), table,
                    table.rect().center(), [this] { m_tour.picture("dragging"); });
    folder.close();
    await([&] { return projectLibrary().size() == before.size() + 1; }, "the file that was dropped is imported");
    awaitActive(dialog());
    awaitSettled(dialog());
}

void OperationsTour::takeBackOne()
{
    const auto before = projectLibrary().size();
    TourInput::click(part<QWidget>(dialog(), "MiddleLine"));
    TourInput::press(Qt::Key_Z, Qt::ControlModifier);
    expect(projectLibrary().size() == before - 1, "what was dropped is gone again");
    awaitSettled(dialog());
}

void OperationsTour::cancel()
{
    closeDialog(*m_window, [] { TourInput::press(Qt::Key_Escape); });
    expect(projectLibrary() == m_libraryBefore, "the project's library is byte for byte the one that it was");
    expect(drawing(*m_window) == m_drawingBefore, "the building looks as before");
    expect(m_window->document().isInProjectLibrary(m_window->document().materialOf(Roof)),
           "the roof has its own material again");
}

void OperationsTour::keepCopy()
{
    TourInput::press(Qt::Key_F4);
    awaitOpen();
    awaitFavorites();
    showCategory("Stone");
    choose("SystemLibrary", idOf(systemMaterial("Ashlar masonry")), entry("copy"));
    m_copy = browser("ProjectLibrary").GetCurSel();
    closeDialog(*m_window, [this] { TourInput::click(part<QPushButton>(dialog(), "pushButtonOk")); });
    expect(projectLibrary().contains(m_copy), "the project keeps the copy");
    expect(idOf(m_window->document().materialOf(Wall)) == m_copy, "and the wall has it");
    expect(m_window->isWindowModified(), "there is something to save");
    drawing(*m_window);
}

// ---- what the steps share

/// Chooses from the context menu of the row.
void OperationsTour::choose(const char* browserName, const QString& id, const QString& entry,
                            const QString& picture) const
{
    const auto pick = [&](QMenu& menu) {
        if (!picture.isEmpty())
            m_tour.picture(picture);
        TourInput::clickEntry(menu, entry);
    };
    QTableWidget& table = *browser(browserName).GetTableWidget();
    expect(row(browserName, id).isValid(), "the material is listed");
    TourInput::inMenu([&] { TourInput::rightClickItem(table, row(browserName, id)); }, pick);
}

/// In the main window, which is brought to the front, with the control key; then goes back to the dialog.
void OperationsTour::pressInWindow(int key) const
{
    TourMouse::click(*m_window->statusBar(), m_window->statusBar()->rect().center());
    awaitActive(*m_window);
    TourInput::press(key, Qt::ControlModifier);
    TourInput::press(Qt::Key_F4);
    awaitActive(dialog());
}

void OperationsTour::dragToRoof(QWidget& view, const CAppearanceInstancePtr& material)
{
    QTableWidget& table = *browser("SystemLibrary").GetTableWidget();
    table.scrollTo(row("SystemLibrary", idOf(material)));
    const auto elementAt = [this](const QPoint& pixel) {
        return m_window->shows3D() ? m_window->view3D().elementAt(pixel) : m_window->elevation().elementAt(pixel);
    };
    TourMouse::drag(*table.viewport(), table.visualRect(row("SystemLibrary", idOf(material))).center(), view,
                    pointOn(view, Roof, elementAt), [this] { m_tour.picture("dragging"); });
    await([&] { return m_window->drawnMaterial(Roof) == material; }, "the roof shows what was dropped there");
}

kiv::CAppearanceLibraryPtr OperationsTour::favorites() const
{
    return m_library.GetMaterialManager()->FindUserAppearanceLibrary(FAVORITE_LIBRARY_NAME);
}

CAppearanceInstancePtr OperationsTour::projectMaterial(const QString& id) const
{
    return m_library.GetMaterialManager()
        ->FindUserAppearanceLibrary(CUSTOMER_LIBRARY_NAME)
        ->FindInstance(id.toStdString());
}

QString OperationsTour::exportedFile() const
{
    return m_folder.filePath("石墙.ggm");
}
