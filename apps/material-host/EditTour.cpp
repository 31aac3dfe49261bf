#include "EditTour.h"

#include "MainWindow.h"
#include "TourChecks.h"
#include "TourInput.h"

#include <AppearanceLibraryBrowserCtrl.h>

#include <kiv/AppearanceParser.h>

#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QFile>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QStyleOptionGroupBox>
#include <QTableWidget>
#include <QToolButton>

using TourChecks::await;
using TourChecks::expect;
using TourChecks::part;
using TourChecks::settledOnScreen;

namespace {

const QString Wall = QStringLiteral("upper-wall");
const QString NewName = QStringLiteral("我的抹灰");

QToolButton& button(const QWidget& control, const QString& text)
{
    for (QToolButton* candidate : control.findChildren<QToolButton*>())
        if (candidate->text() == text)
            return *candidate;
    throw TourFailure("there is no button " + text);
}

/// Qt's dialog has a line for a colour as web pages write it.
QLineEdit& colourName(const QWidget& colourDialog)
{
    for (QLineEdit* candidate : colourDialog.findChildren<QLineEdit*>())
        if (candidate->text().startsWith('#'))
            return *candidate;
    throw TourFailure("the colour dialog takes no name of a colour");
}

}  // namespace

void EditTour::addSteps(std::vector<TourStep>& steps)
{
    steps.insert(steps.end(), {{"edit-material", [this] { open(); }},
                               {"edit-name", [this] { rename(); }},
                               {"edit-switch", [this] { switchTexture(); }},
                               {"edit-colour", [this] { changeColour(); }},
                               {"edit-number", [this] { changeNumber(); }},
                               {"edit-texture", [this] { chooseTexture(); }},
                               {"edit-placement", [this] { placeTexture(); }},
                               {"edit-normal-map", [this] { makeNormalMap(); }},
                               {"take-back-one", [this] { takeBackOne(); }},
                               {"take-back-all", [this] { takeBackAll(); }}});
}

// ---- steps

void EditTour::open()
{
    TourInput::press(Qt::Key_2, Qt::ControlModifier);
    await([this] { return m_window->view3D().isVisible(); }, "the building is shown in space");
    m_buildingBefore = m_window->view3D().drawing();
    expect(m_window->selectedElement() == Wall, "the upper wall is still selected");
    m_material = m_window->drawnMaterial(Wall);
    TourInput::press(Qt::Key_F4);
    awaitOpen();
    m_documentBefore = document();
    m_building = m_buildingBefore;
    m_preview = settledOnScreen(preview());
    expect(control<QGroupBox>("useBaseTexture").isEnabled(), "the material of the project can be edited");
}

void EditTour::rename()
{
    TourInput::retype(control<QLineEdit>("name"), NewName);
    expect(rowText() == NewName, "the row shows the new name");
}

void EditTour::switchTexture()
{
    toggle("useBaseTexture");
    expectChange("the plain colour");
}

void EditTour::changeColour()
{
    const auto choose = [this](QWidget& colours) {
        TourInput::retype(colourName(colours), "#3d7d8c");
        m_tour.picture("dialog");
        TourInput::press(Qt::Key_Return);
    };
    QPushButton& colour = control<QPushButton>("diffuse_color");
    TourInput::answerModals([&] { TourInput::click(colour); }, {choose});
    TourChecks::awaitActive(dialog());
    expect(colour.text() == "RGB(61,125,140)", "the button shows the colour");
    expectChange("the new colour");
}

void EditTour::changeNumber()
{
    TourInput::retype(control<QDoubleSpinBox>("roughness"), "12");
    expect(m_material->ValueOr<float>("roughness", 1) < 0.13F, "the wall is nearly polished");
    expectChange("the gloss");
}

void EditTour::chooseTexture()
{
    toggle("useBaseTexture");
    const auto choose = [this](QWidget& files) { TourInput::enterFile(files, ownTexture()); };
    QToolButton& more = button(control<QWidget>("diffuse_texture"), "...");
    TourInput::answerModals([&] { TourInput::click(more); }, {choose});
    TourChecks::awaitActive(dialog());
    expectChange("the user's own picture");
}

void EditTour::placeTexture()
{
    const auto place = [this](QWidget& editor) {
        TourInput::retype(part<QDoubleSpinBox>(editor, "sampleWidth"), "2.4");
        TourInput::retype(part<QDoubleSpinBox>(editor, "sampleHeight"), "2.4");
        TourInput::retype(part<QDoubleSpinBox>(editor, "rotation"), "30");
        TourInput::press(Qt::Key_Tab);
        settledOnScreen(part<QWidget>(editor, "sceneViewer"));
        m_tour.picture("dialog");
        TourInput::click(part<QPushButton>(editor, "pushButtonOk"));
    };
    auto& picture = part<QWidget>(control<QWidget>("diffuse_texture"), "thumbnail");
    TourInput::answerModals([&] { TourInput::click(picture); }, {place});
    TourChecks::awaitActive(dialog());
    expectChange("the picture larger and turned");
}

void EditTour::makeNormalMap()
{
    auto& relief = control<QGroupBox>("enableBump");
    if (!relief.isChecked())
        toggle("enableBump");
    TourInput::click(button(control<QWidget>("bump_texture"), "<>"));
    expect(QFile::exists(m_folder.filePath("own_normal.jpg")), "the normal map lies beside the picture");
    expectChange("the relief");
}

void EditTour::takeBackOne()
{
    TourInput::press(Qt::Key_Z, Qt::ControlModifier);
    expectChange("no relief");
}

void EditTour::takeBackAll()
{
    closeDialog(*m_window, [] { TourInput::press(Qt::Key_Escape); });
    expect(document() == m_documentBefore, "the material is byte for byte the one that it was");
    expect(m_window->view3D().drawing() == m_buildingBefore, "the building looks as it did");
    settledOnScreen(m_window->view3D());
}

// ---- what the steps share

/// The control of the property, scrolled to.
template <typename Widget>
Widget& EditTour::control(const char* key) const
{
    auto& found = part<Widget>(dialog(), key);
    for (QWidget* outer = &found; outer; outer = outer->parentWidget())
        if (auto* area = qobject_cast<QScrollArea*>(outer))
            area->ensureWidgetVisible(&found, 0, 4);
    return found;
}

void EditTour::toggle(const char* key) const
{
    auto& box = control<QGroupBox>(key);
    QStyleOptionGroupBox option;
    option.initFrom(&box);
    option.text = box.title();
    option.subControls = QStyle::SC_GroupBoxCheckBox | QStyle::SC_GroupBoxLabel;
    const QRect mark = box.style()->subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxCheckBox, &box);
    const bool before = box.isChecked();
    TourInput::click(box, mark.center());
    expect(box.isChecked() != before, QString("%1 is switched").arg(key));
}

/// Preview and building look different from how they did before.
void EditTour::expectChange(const QString& what)
{
    const QImage body = settledOnScreen(preview());
    const QImage building = m_window->view3D().drawing();
    expect(body != m_preview, "the preview shows " + what);
    expect(building != m_building, "the building shows " + what);
    m_preview = body;
    m_building = building;
    settledOnScreen(dialog());
}

std::string EditTour::document() const
{
    return kiv::CAppearanceParser(*m_library.GetMaterialManager()).AppearanceToString(m_material);
}

QString EditTour::rowText() const
{
    const QTableWidget& table = *browser("ProjectLibrary").GetTableWidget();
    return table.currentRow() < 0 ? QString() : table.item(table.currentRow(), 1)->text();
}

/// A picture of the user's, in a folder of the user's.
QString EditTour::ownTexture() const
{
    const QString path = m_folder.filePath("own.png");
    const auto shipped = m_library.GetMaterialManager()->ResolvePath(std::wstring(L"brick_yellow_flemish.png"));
    expect(QFile::copy(QString::fromStdWString(shipped), path), "there is a picture to choose");
    return path;
}
