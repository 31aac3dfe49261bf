#include "SpaceTour.h"

#include "MainWindow.h"
#include "TourChecks.h"
#include "TourInput.h"

#include <AppearanceLibraryBrowserCtrl.h>

#include <QComboBox>
#include <QDialog>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>

using TourChecks::await;
using TourChecks::awaitSettled;
using TourChecks::expect;
using TourChecks::part;
using TourChecks::settledOnScreen;

namespace {

const QString Wall = QStringLiteral("upper-wall");

struct Pick {
    const char* category;
    const char* name;
    const char* picture;
};

const Pick Picks[] = {{"Brick", "Red facing brick, running bond", "brick"},
                      {"Metal", "Stainless steel, brushed", "steel"},
                      {"Glass", "Clear float glass", "glass"},
                      {"Wood", "Walnut, satin", "walnut"},
                      {"Stone", "Green marble", "marble"},
                      {"Wallpaper", "Damask wallpaper, gold", "wallpaper"},
                      {"Leather", "Cognac leather", "leather"},
                      {"TilesPlain", "Glass mosaic, blue", "mosaic"},
                      {"Roof", "Glazed tile, imperial yellow", "roof-tile"},
                      {"Concrete", "Board-formed concrete", "concrete"}};

}  // namespace

void SpaceTour::addSteps(std::vector<TourStep>& steps)
{
    steps.insert(steps.end(), {{"view-3d", [this] { show(); }},
                               {"orbit", [this] { orbit(); }},
                               {"select-in-3d", [this] { select(); }},
                               {"apply-in-3d", [this] { apply(); }},
                               {"preview-shapes", [this] { previewShapes(); }},
                               {"preview-shading", [this] { previewShading(); }},
                               {"preview-background", [this] { previewBackground(); }},
                               {"ten-materials", [this] { tenMaterials(); }},
                               {"keep-in-3d", [this] { keep(); }},
                               {"turn-back", [this] { turnBack(); }},
                               {"elevation", [this] { showElevation(); }}});
}

// ---- steps

void SpaceTour::show()
{
    TourInput::press(Qt::Key_2, Qt::ControlModifier);
    await([this] { return view().isVisible(); }, "the building is shown in space");
    m_front = view().drawing();
    expect(!m_front.isNull(), "it is drawn");
    settledOnScreen(view());
}

void SpaceTour::orbit()
{
    drag({55, 14});
    const QImage left = view().drawing();
    expect(left != m_front, "dragging turns the building");
    settledOnScreen(view());
    m_tour.picture("left");
    drag({-95, 0});
    expect(view().drawing() != left, "and back to the other side");
    settledOnScreen(view());
}

void SpaceTour::select()
{
    const QImage before = view().drawing();
    const QImage unframed = settledOnScreen(view());
    TourInput::click(view(), pointIn("sofa"));
    expect(m_window->selectedElement() == "sofa", "the click selects the sofa");
    TourInput::click(view(), pointIn(Wall));
    expect(m_window->selectedElement() == Wall, "the click selects the upper wall");
    expect(m_window->elements().currentItem() == m_window->elements().itemOf(Wall), "the list shows it selected");
    expect(settledOnScreen(view()) != unframed, "it is framed");
    expect(view().drawing() == before, "its material stays as it is");
}

void SpaceTour::apply()
{
    const QImage before = view().drawing();
    TourInput::doubleClick(view(), pointIn(Wall));
    awaitOpen();
    showCategory("Brick");
    clickMaterial(systemMaterial("Red facing brick, running bond"));
    expect(m_window->drawnMaterial(Wall) == systemMaterial("Red facing brick, running bond"),
           "it is tried on the wall");
    expect(view().drawing() != before, "the wall shows the brick while the dialog is open");
    awaitSettled(dialog());
    settledOnScreen(dialog());
}

void SpaceTour::previewShapes()
{
    QImage last = settledOnScreen(preview());
    for (const char* shape : {"Sphere", "Box", "Surface"}) {
        choosePreview("shapeCombo", shape);
        const QImage now = settledOnScreen(preview());
        expect(now != last, QString("the preview shows another body: %1").arg(shape));
        m_tour.picture(QString(shape).toLower());
        last = now;
    }
    choosePreview("shapeCombo", "Sphere");
    settledOnScreen(preview());
}

void SpaceTour::previewShading()
{
    const QImage full = settledOnScreen(preview());
    choosePreview("shadingCombo", "Fast Shader");
    expect(settledOnScreen(preview()) != full, "the fast shading looks different");
    m_tour.picture("fast");
    choosePreview("shadingCombo", "Default Shader");
    expect(settledOnScreen(preview()) == full, "the default shading is back");
}

void SpaceTour::previewBackground()
{
    auto& button = part<QToolButton>(dialog(), "backgroundButton");
    const QImage sky = settledOnScreen(preview());
    TourInput::chooseFromMenu(button, 4);
    expect(settledOnScreen(preview()).pixelColor(3, 3) == QColor(Qt::black), "the body stands before black");
    m_tour.picture("black");
    TourInput::chooseFromMenu(button, 0);
    expect(settledOnScreen(preview()) == sky, "the sky is back");
}

void SpaceTour::tenMaterials()
{
    QImage last;
    for (const Pick& pick : Picks) {
        m_last = systemMaterial(pick.name);
        showCategory(pick.category);
        clickMaterial(m_last);
        expect(m_window->drawnMaterial(Wall) == m_last, QString("the wall shows %1").arg(pick.name));
        view().drawing();  // waits for its textures
        awaitSettled(dialog());
        const QImage now = settledOnScreen(preview());
        expect(now != last, QString("the preview shows %1").arg(pick.name));
        m_tour.picture(pick.picture);
        last = now;
    }
}

void SpaceTour::keep()
{
    const QImage shown = view().drawing();
    closeDialog(*m_window, [this] { TourInput::click(part<QPushButton>(dialog(), "pushButtonOk")); });
    expect(m_window->document().materialOf(Wall) == m_last, "the wall keeps what was shown last");
    expect(view().drawing() == shown, "it looks as it did");
    settledOnScreen(view());
}

void SpaceTour::turnBack()
{
    TourInput::press(Qt::Key_Z, Qt::ControlModifier);
    TourInput::press(Qt::Key_0, Qt::ControlModifier);
    expect(view().drawing() == m_front, "undone and seen from the front, the building is as it was");
    settledOnScreen(view());
}

void SpaceTour::showElevation()
{
    TourInput::press(Qt::Key_1, Qt::ControlModifier);
    await([this] { return m_window->elevation().isVisible(); }, "the elevation is shown");
    m_window->elevation().drawing();
    await([this] { return m_window->textures().isIdle(); }, "the textures are there");
    expect(!m_window->shows3D() && m_window->selectedElement() == Wall, "the wall is still selected");
    awaitSettled(m_window->elevation());
}

// ---- what the steps share

BuildingView3D& SpaceTour::view() const
{
    return m_window->view3D();
}

/// A point that shows the element and nothing in front of it.
QPoint SpaceTour::pointIn(const QString& elementId) const
{
    const QRect area = view().placeOf(elementId);
    for (int y = area.center().y(); y < area.bottom(); y += 4)
        for (int x = area.left() + 4; x < area.right(); x += 4)
            if (view().elementAt({x, y}) == elementId)
                return {x, y};
    throw TourFailure("the element " + elementId + " is not seen in space");
}

void SpaceTour::drag(const QPoint& by)
{
    const QPoint from = view().rect().center();
    TourInput::drag(view(), from, from + by);
}

void SpaceTour::choosePreview(const char* box, const QString& text)
{
    auto& combo = part<QComboBox>(dialog(), box);
    expect(combo.findText(text) >= 0, "the previewer offers " + text);
    TourInput::choose(combo, combo.findText(text));
    expect(combo.currentText() == text, "the previewer is set to " + text);
}
