#include "ElevationView.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QWheelEvent>

#include <cmath>

namespace {

constexpr double MinZoom = 0.5;
constexpr double MaxZoom = 12;
const QColor SelectionColour(0, 120, 215);

}  // namespace

ElevationView::ElevationView(const MaterialFill& fill, ElevationPainter::MaterialOf materialOf, Describe describe,
                             QWidget* parent)
    : QWidget(parent), m_fill(fill), m_materialOf(std::move(materialOf)), m_describe(std::move(describe))
{
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setBuilding({});
}

void ElevationView::setBuilding(const Building& building)
{
    m_building = building;
    m_shadows = std::make_unique<BuildingShadows>(m_building);
    m_selected.clear();
    m_hovered.clear();
    m_dropTarget.clear();
    zoomToFit();
}

void ElevationView::select(const QString& elementId)
{
    m_selected = elementId;
    update();
}

void ElevationView::showDropTarget(const QString& elementId, const QPoint& pixel)
{
    m_dropTarget = elementId;
    hover(elementId, pixel);
}

void ElevationView::refresh()
{
    m_picture = {};
    update();
}

void ElevationView::zoomBy(double factor)
{
    zoomAbout(rect().center(), factor);
}

void ElevationView::zoomToFit()
{
    m_zoom = 1;
    m_centre = m_building.extent.center();
    hoverAgain();
    refresh();
    emit zoomed();
}

void ElevationView::zoomAbout(const QPointF& pixel, double factor)
{
    const QPointF fixed = scale().toMetres(pixel);
    m_zoom = qBound(MinZoom, m_zoom * factor, MaxZoom);
    m_centre += fixed - scale().toMetres(pixel);
    hoverAgain();
    refresh();
    emit zoomed();
}

ElevationScale ElevationView::scale() const
{
    const QSizeF extent = m_building.extent.isEmpty() ? QSizeF(1, 1) : m_building.extent.size();
    ElevationScale scale;
    // Fills the widget: of the drawing, what stands beyond the shorter side is sky, lawn or soil.
    scale.pixelsPerMetre = m_zoom * qMin(width() / extent.width(), height() / extent.height());
    scale.origin = QPointF(width() / 2.0 - m_centre.x() * scale.pixelsPerMetre,
                           height() / 2.0 + m_centre.y() * scale.pixelsPerMetre);
    return scale;
}

QPainterPath ElevationView::outlineOf(const QString& elementId) const
{
    const BuildingElement* element = m_building.find(elementId);
    return element ? scale().toPixels().map(element->outline) : QPainterPath();
}

QString ElevationView::elementAt(const QPoint& pixel) const
{
    const BuildingElement* element = m_building.at(scale().toMetres(pixel));
    return element ? element->id : QString();
}

void ElevationView::drawPicture()
{
    m_picture = QPixmap(size() * devicePixelRatioF());
    m_picture.setDevicePixelRatio(devicePixelRatioF());
    QPainter painter(&m_picture);
    ElevationPainter(m_building, *m_shadows, m_fill).paint(painter, rect(), scale(), m_materialOf);
}

QImage ElevationView::drawing()
{
    if (m_picture.isNull())
        drawPicture();
    return m_picture.toImage();
}

void ElevationView::paintEvent(QPaintEvent*)
{
    if (m_picture.isNull())
        drawPicture();
    QPainter painter(this);
    painter.drawPixmap(0, 0, m_picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const QString framed = m_dropTarget.isEmpty() ? m_selected : m_dropTarget;
    if (m_hovered != framed)
        paintMark(painter, m_hovered, QColor(255, 255, 255, 210), 2);
    paintMark(painter, framed, QColor(255, 255, 255, 190), 5);
    paintMark(painter, framed, SelectionColour, 2.5);
    paintDescription(painter);
}

void ElevationView::paintMark(QPainter& painter, const QString& elementId, const QColor& colour, double width) const
{
    if (!elementId.isEmpty())
        painter.strokePath(outlineOf(elementId), QPen(colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

void ElevationView::paintDescription(QPainter& painter) const
{
    const BuildingElement* element = m_building.find(m_hovered);
    if (!element)
        return;
    const QString text = m_describe(*element);
    QRect box = painter.fontMetrics().boundingRect(text).adjusted(-9, -5, 9, 5);
    box.moveTopLeft(m_pointer + QPoint(16, 18));
    box.moveLeft(qBound(4, box.left(), qMax(4, width() - box.width() - 4)));
    if (box.bottom() > height() - 4)
        box.moveBottom(m_pointer.y() - 8);
    painter.setPen(QColor(255, 255, 255, 60));
    painter.setBrush(QColor(32, 36, 44, 225));
    painter.drawRoundedRect(box, 4, 4);
    painter.setPen(Qt::white);
    painter.drawText(box, Qt::AlignCenter, text);
}

void ElevationView::hover(const QString& elementId, const QPoint& pixel)
{
    m_pointer = pixel;
    if (elementId != m_hovered) {
        m_hovered = elementId;
        emit elementHovered(elementId);
    }
    update();
}

/// The drawing moved under a mouse that stands still.
void ElevationView::hoverAgain()
{
    if (m_hasPointer)
        hover(elementAt(m_pointer), m_pointer);
}

void ElevationView::resizeEvent(QResizeEvent*)
{
    refresh();
    emit zoomed();
}

void ElevationView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        emit elementClicked(elementAt(event->pos()));
    m_dragStart = event->pos();
    m_dragCentre = m_centre;
}

void ElevationView::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QString elementId = elementAt(event->pos());
    if (event->button() == Qt::LeftButton && !elementId.isEmpty())
        emit elementDoubleClicked(elementId);
}

void ElevationView::mouseMoveEvent(QMouseEvent* event)
{
    m_hasPointer = true;
    hover(elementAt(event->pos()), event->pos());
    if (!(event->buttons() & Qt::MiddleButton))
        return;
    const QPointF moved = QPointF(event->pos() - m_dragStart) / pixelsPerMetre();
    m_centre = m_dragCentre + QPointF(-moved.x(), moved.y());
    refresh();
}

void ElevationView::wheelEvent(QWheelEvent* event)
{
    zoomAbout(event->position(), std::pow(1.0015, event->angleDelta().y()));
}

void ElevationView::leaveEvent(QEvent*)
{
    m_hasPointer = false;
    hover({}, {});
}
