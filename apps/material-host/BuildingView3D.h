#pragma once

#include "Building.h"
#include "BuildingMesh.h"

#include <kiv/AppearanceLibraryManager.h>
#include <kiv/Scene.h>

#include <QHash>
#include <QImage>
#include <QMatrix4x4>
#include <QWidget>

#include <functional>
#include <memory>

namespace kiv {
class CViewer;
}

/// The building as a model in space, under the sky of the shipped data. Dragging turns it, the middle button moves it,
/// the wheel zooms, and a click selects the element under the pointer, which is framed and keeps its looks. The viewer
/// is made when the widget is first shown; what is asked for before counts then.
class BuildingView3D : public QWidget {
    Q_OBJECT

public:
    using MaterialOf = std::function<kiv::CAppearanceInstancePtr(const QString& elementId)>;

    /// The manager is borrowed and outlives the widget.
    BuildingView3D(const kiv::CAppearanceLibraryManager& manager, MaterialOf materialOf, QWidget* parent = nullptr);
    ~BuildingView3D() override;

    void setBuilding(const Building& building);
    void select(const QString& elementId);
    /// Frames the element on which a dragged material would be dropped, instead of the selected one; none for an empty
    /// id.
    void showDropTarget(const QString& elementId);
    /// Draws the element with the material that it has now.
    void refresh(const QString& elementId);

    void zoomBy(double factor);
    /// The whole building from the front.
    void zoomToFit();
    /// At the point that the view turns about.
    double pixelsPerMetre() const;

    /// The element that takes a material and is seen at the pixel; empty when there is none.
    QString elementAt(const QPoint& pixel);
    /// Where the element is drawn, as far as it is not hidden; empty when there is none of the id.
    QRect placeOf(const QString& elementId) const;
    /// What is drawn, without the frame of the selection. Waits for pictures of textures.
    QImage drawing();

    QSize sizeHint() const override { return {820, 680}; }
    QSize minimumSizeHint() const override { return {320, 260}; }

signals:
    /// Empty when the click met nothing that takes a material.
    void elementClicked(const QString& elementId);
    void elementDoubleClicked(const QString& elementId);
    void zoomed();

protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    struct Shown {
        BuildingMesh body;
        kiv::CVisualNodePtr node;
    };

    void createViewer();
    void fillScene();
    void showMaterial(const BuildingElement& element, kiv::CVisualNode& node) const;
    void frameElement();
    void changed();
    void forwardMouse(const QMouseEvent& event);
    QMatrix4x4 toPixels() const;

    const kiv::CAppearanceLibraryManager& m_manager;
    MaterialOf m_materialOf;
    Building m_building;
    QString m_selected;
    QString m_dropTarget;
    std::unique_ptr<kiv::CViewer> m_viewer;  // null until first shown
    kiv::CVisualNodePtr m_elements;
    kiv::CVisualNodePtr m_scenery;
    kiv::CVisualNodePtr m_frame;
    QHash<QString, std::shared_ptr<Shown>> m_shown;
    QPoint m_pressed;
    bool m_mayClick = false;  // the button went down and the mouse has not moved away
};
