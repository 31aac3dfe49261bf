#pragma once

#include "BuildingShadows.h"
#include "ElevationPainter.h"

#include <QPixmap>
#include <QWidget>

#include <memory>

/// The drawn building. A click selects an element, the pointer tells its name and material, the wheel zooms about the
/// pointer and the middle button moves the drawing.
class ElevationView : public QWidget {
    Q_OBJECT

public:
    /// What a person is told of the element under the pointer.
    using Describe = std::function<QString(const BuildingElement&)>;

    ElevationView(const MaterialFill& fill, ElevationPainter::MaterialOf materialOf, Describe describe,
                  QWidget* parent = nullptr);

    void setBuilding(const Building& building);
    void select(const QString& elementId);
    /// Frames the element on which a dragged material would be dropped, instead of the selected one; none for an empty
    /// id.
    void showDropTarget(const QString& elementId, const QPoint& pixel);
    /// Draws anew: a material changed or a texture arrived.
    void refresh();

    void zoomBy(double factor);
    void zoomToFit();
    double pixelsPerMetre() const { return scale().pixelsPerMetre; }

    /// The element's outline in pixels of this widget; empty when there is none of the id.
    QPainterPath outlineOf(const QString& elementId) const;

    /// The front-most element that takes a material at the pixel; empty when there is none.
    QString elementAt(const QPoint& pixel) const;
    /// What is drawn, without marks and descriptions.
    QImage drawing();

    QSize sizeHint() const override { return {820, 680}; }
    QSize minimumSizeHint() const override { return {320, 260}; }

signals:
    /// Empty when the click met nothing that takes a material.
    void elementClicked(const QString& elementId);
    void elementDoubleClicked(const QString& elementId);
    void elementHovered(const QString& elementId);
    void zoomed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    ElevationScale scale() const;
    void zoomAbout(const QPointF& pixel, double factor);
    void hover(const QString& elementId, const QPoint& pixel);
    void hoverAgain();
    void drawPicture();
    void paintMark(QPainter& painter, const QString& elementId, const QColor& colour, double width) const;
    void paintDescription(QPainter& painter) const;

    const MaterialFill& m_fill;
    ElevationPainter::MaterialOf m_materialOf;
    Describe m_describe;
    Building m_building;
    std::unique_ptr<BuildingShadows> m_shadows;
    QPixmap m_picture;  // everything but marks and descriptions; null when it must be drawn anew
    QString m_selected;
    QString m_hovered;
    QString m_dropTarget;
    QPoint m_pointer;
    bool m_hasPointer = false;
    double m_zoom = 1;  // 1 shows the building's whole extent
    QPointF m_centre;   // in metres
    QPoint m_dragStart;
    QPointF m_dragCentre;
};
