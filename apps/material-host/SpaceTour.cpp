#include "SpaceTour.h"

#include "MainWindow.h"
#include "TourChecks.h"
#include "TourInput.h"

#include <AppearanceLibraryBrowserCtrl.h>

#include <QComboBox>
#include <QDialog>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPushButton>
#include <QScreen>

using TourChecks::await;
using TourChecks::awaitSettled;
using TourChecks::expect;

namespace {

const QString Wall = QStringLiteral("upper-wall");
constexpr int SettledMs = 400;  // without any change

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
    settled(view());
}

void SpaceTour::orbit()
{
    drag({55, 14});
    const QImage left = view().drawing();
    expect(left != m_front, "dragging turns the building");
    settled(view());
    m_tour.picture("left");
    drag({-95, 0});
    expect(view().drawing() != left, "and back to the other side");
    settled(view());
}

void SpaceTour::select()
{
    const QImage before = view().drawing();
    const QImage unframed = settled(view());
    TourInput::click(view(), pointIn("sofa"));
    expect(m_window->selectedElement() == "sofa", "the click selects the sofa");
    TourInput::click(view(), pointIn(Wall));
    expect(m_window->selectedElement() == Wall, "the click selects the upper wall");
    expect(m_window->elements().currentItem() == m_window->elements().itemOf(Wall), "the list shows it selected");
    expect(settled(view()) != unframed, "it is framed");
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
    settled(dialog());
}

void SpaceTour::previewShapes()
{
    QImage last = settled(preview());
    for (const char* shape : {"Sphere", "Box", "Surface"}) {
        choosePreview("shapeCombo", shape);
        const QImage now = settled(preview());
        expect(now != last, QString("the preview shows another body: %1").arg(shape));
        m_tour.picture(QString(shape).toLower());
        last = now;
    }
    choosePreview("shapeCombo", "Sphere");
    settled(preview());
}

void SpaceTour::previewShading()
{
    const QImage full = settled(preview());
    choosePreview("shadingCombo", "Fast Shader");
    expect(settled(preview()) != full, "the fast shading looks different");
    m_tour.picture("fast");
    choosePreview("shadingCombo", "Default Shader");
    expect(settled(preview()) == full, "the default shading is back");
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
        const QImage now = settled(preview());
        expect(now != last, QString("the preview shows %1").arg(pick.name));
        m_tour.picture(pick.picture);
        last = now;
    }
}

void SpaceTour::keep()
{
    const QImage shown = view().drawing();
    closeDialog(*m_window, [this] { TourInput::click(*dialog().findChild<QPushButton*>("pushButtonOk")); });
    expect(m_window->document().materialOf(Wall) == m_last, "the wall keeps what was shown last");
    expect(view().drawing() == shown, "it looks as it did");
    settled(view());
}

void SpaceTour::turnBack()
{
    TourInput::press(Qt::Key_Z, Qt::ControlModifier);
    TourInput::press(Qt::Key_0, Qt::ControlModifier);
    expect(view().drawing() == m_front, "undone and seen from the front, the building is as it was");
    settled(view());
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

QImage SpaceTour::screenOf(const QWidget& widget) const
{
    const QRect place(widget.mapToGlobal(QPoint()), widget.size());
    return QGuiApplication::primaryScreen()->grabWindow(0).toImage().copy(place);
}

/// The widget on the screen, when it no longer changes.
QImage SpaceTour::settled(const QWidget& widget) const
{
    QImage last;
    QElapsedTimer unchanged;
    const auto isSettled = [&] {
        const QImage now = screenOf(widget);
        if (now != last)
            unchanged.start();
        last = now;
        return unchanged.elapsed() > SettledMs;
    };
    await(isSettled, "the picture has arrived");
    return last;
}

void SpaceTour::choosePreview(const char* box, const QString& text)
{
    auto* combo = dialog().findChild<QComboBox*>(box);
    expect(combo && combo->findText(text) >= 0, "the previewer offers " + text);
    TourInput::choose(*combo, combo->findText(text));
    expect(combo->currentText() == text, "the previewer is set to " + text);
}

QWidget& SpaceTour::preview() const
{
    auto* scene = dialog().findChild<QWidget*>("sceneWidget");
    if (!scene)
        throw TourFailure("the dialog has no preview");
    await([scene] { return scene->isVisible(); }, "the preview is there");
    return *scene;
}
