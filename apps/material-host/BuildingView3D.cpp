#include "BuildingView3D.h"

#include "SelectionFrame.h"

#include <PreviewSkybox.h>
#include <ViewerEvents.h>

#include <kiv/TangentHelper.h>
#include <kiv/Viewer.h>

#include <QApplication>
#include <QMouseEvent>
#include <QWheelEvent>

#include <cmath>

namespace {

constexpr double FramePixels = 2.5;
constexpr double FitMargin = 1.04;
constexpr double LampIntensity = 0.6;

kiv::CVec4<float> colourOf(const BuildingElement& scenery)
{
    const auto mean = [](double a, double b) { return float((a + b) / 2); };
    const QColor& a = scenery.top;
    const QColor& b = scenery.bottom;
    return {mean(a.redF(), b.redF()), mean(a.greenF(), b.greenF()), mean(a.blueF(), b.blueF()), 1};
}

GRefPtr<kiv::CStateSet> sceneryStateSet(const BuildingElement& scenery)
{
    GRefPtr<kiv::CStateSet> stateSet(new kiv::CStateSet);
    stateSet->SetShaderParts({"generic"});
    stateSet->SetUniform("baseColor", colourOf(scenery));
    stateSet->SetUniform("roughness", 0.8F);
    return stateSet;
}

kiv::CPrimitiveRenderablePtr renderableOf(const BuildingMesh& body)
{
    auto renderable = std::make_shared<kiv::CPrimitiveRenderable>();
    renderable->SetMesh(body.mesh());
    kiv::CTangentHelper::GenTangents(*renderable);
    return renderable;
}

QVector3D toQt(const kiv::CVec3<double>& v)
{
    return QVector3D(float(v.x), float(v.y), float(v.z));
}

}  // namespace

BuildingView3D::BuildingView3D(const kiv::CAppearanceLibraryManager& manager, MaterialOf materialOf, QWidget* parent)
    : QWidget(parent), m_manager(manager), m_materialOf(std::move(materialOf)),
      m_elements(std::make_shared<kiv::CVisualNode>("elements")),
      m_scenery(std::make_shared<kiv::CVisualNode>("scenery")), m_frame(std::make_shared<kiv::CVisualNode>("frame"))
{
    setAttribute(Qt::WA_NoSystemBackground);
}

BuildingView3D::~BuildingView3D() = default;

// ---- the scene

void BuildingView3D::createViewer()
{
    m_viewer = std::make_unique<kiv::CViewer>(winId(), 0);
    m_viewer->SetDefault();
    m_viewer->GetOptions().SetViewAxesEnabled(false);
    m_viewer->GetOptions().SetAutoAdjustRotationCenter(false);
    m_viewer->GetCamera().SetType(kiv::CCamera::Perspective, 1);
    if (kiv::CLight* lamp = m_viewer->GetScene().FindLight("HeadLamp"))
        lamp->SetIntensity(LampIntensity);
    m_frame->SetStateSet(SelectionFrame::stateSet().get());
    for (const kiv::CVisualNodePtr& node : {m_elements, m_scenery, m_frame})
        m_viewer->GetScene().GetRoot()->AddChild(node);
    SetUpPreviewSkybox(*m_viewer, m_manager.GetTextureLibraryPath() + L"/skybox/");
    fillScene();
    zoomToFit();
}

void BuildingView3D::fillScene()
{
    const kiv::CScene::CLocker lock(m_viewer->GetScene());
    for (const auto& shown : m_shown) {
        m_elements->RemoveChild(shown->node.get());
        m_scenery->RemoveChild(shown->node.get());
    }
    m_shown.clear();
    // Elements are ordered from back to front; drawn the other way round, what is hidden need not be shaded.
    for (auto it = m_building.elements.crbegin(); it != m_building.elements.crend(); ++it) {
        const BuildingElement& element = *it;
        const auto shown = std::make_shared<Shown>(Shown{BuildingMesh(element, m_building.extent),
                                                         std::make_shared<kiv::CVisualNode>(element.id.toStdString())});
        if (shown->body.mesh().indices.empty())
            continue;
        shown->node->SetRenderable(renderableOf(shown->body));
        showMaterial(element, *shown->node);
        (element.takesMaterial() ? m_elements : m_scenery)->AddChild(shown->node);
        m_shown.insert(element.id, shown);
    }
}

void BuildingView3D::showMaterial(const BuildingElement& element, kiv::CVisualNode& node) const
{
    if (!element.takesMaterial()) {
        node.SetStateSet(sceneryStateSet(element).get());
        return;
    }
    const GRefPtr<kiv::CStateSet> stateSet(new kiv::CStateSet);
    const kiv::CAppearanceInstancePtr material = m_materialOf(element.id);
    if (material)
        m_manager.Translate(material, stateSet.get());
    node.SetStateSet(stateSet.get());
}

void BuildingView3D::setBuilding(const Building& building)
{
    m_building = building;
    m_selected.clear();
    m_dropTarget.clear();
    if (!m_viewer)
        return;
    fillScene();
    zoomToFit();
}

void BuildingView3D::select(const QString& elementId)
{
    m_selected = elementId;
    changed();
}

void BuildingView3D::showDropTarget(const QString& elementId)
{
    if (elementId == m_dropTarget)
        return;
    m_dropTarget = elementId;
    changed();
}

void BuildingView3D::refresh(const QString& elementId)
{
    const auto shown = m_shown.value(elementId);
    const BuildingElement* element = m_building.find(elementId);
    if (!shown || !element)
        return;
    {
        const kiv::CScene::CLocker lock(m_viewer->GetScene());
        showMaterial(*element, *shown->node);
    }
    m_viewer->SetDirty();
}

// The frame is as thick as a line of the elevation, from wherever it is seen.
void BuildingView3D::frameElement()
{
    const auto shown = m_shown.value(m_dropTarget.isEmpty() ? m_selected : m_dropTarget);
    const kiv::CScene::CLocker lock(m_viewer->GetScene());
    m_frame->SetRenderable(shown ? SelectionFrame::make(shown->body.edges(), FramePixels / pixelsPerMetre()) : nullptr);
}

void BuildingView3D::changed()
{
    if (!m_viewer)
        return;
    frameElement();
    m_viewer->SetDirty();
}

// ---- the view

void BuildingView3D::zoomBy(double factor)
{
    if (!m_viewer)
        return;
    m_viewer->GetCamera().Zoom(factor);
    changed();
    emit zoomed();
}

void BuildingView3D::zoomToFit()
{
    if (!m_viewer || height() < 1 || m_building.extent.isEmpty())
        return;
    const QRectF& extent = m_building.extent;
    kiv::CCamera& camera = m_viewer->GetCamera();
    camera.SetViewPoint(kiv::CCamera::ViewFront);
    // The front fills the view: what is fitted is the sphere that the picture's shorter side cuts.
    const double aspect = double(width()) / height();
    const double half = qMax(extent.height(), extent.width() / aspect) / 2 * FitMargin;
    const double radius = half * std::cos(kiv::CCamera::FieldOfView / 2);
    camera.Fit({extent.center().x(), 0, extent.center().y()}, radius, 1);
    changed();
    emit zoomed();
}

double BuildingView3D::pixelsPerMetre() const
{
    if (!m_viewer)
        return 1;
    const double half = m_viewer->GetCamera().GetDistance() * std::tan(kiv::CCamera::FieldOfView / 2);
    return qMax(1, height()) / (2 * half);
}

QMatrix4x4 BuildingView3D::toPixels() const
{
    const kiv::CCamera& camera = m_viewer->GetCamera();
    QMatrix4x4 matrix;
    matrix.viewport(rect());
    matrix.perspective(float(kiv::CCamera::FieldOfView * 180 / M_PI), float(width()) / float(qMax(1, height())), 0.1F,
                       1000);
    matrix.lookAt(toQt(camera.GetEye()), toQt(camera.GetCentre()), toQt(camera.GetUp()));
    return matrix;
}

QRect BuildingView3D::placeOf(const QString& elementId) const
{
    const auto shown = m_shown.value(elementId);
    if (!shown)
        return {};
    const QMatrix4x4 matrix = toPixels();
    QPolygonF places;
    for (const kiv::CVec3<float>& vertex : shown->body.mesh().vertices) {
        const QVector3D place = matrix.map(QVector3D(vertex.x, vertex.y, vertex.z));
        places.append({double(place.x()), height() - double(place.y())});
    }
    return places.boundingRect().toAlignedRect().intersected(rect());
}

QString BuildingView3D::elementAt(const QPoint& pixel)
{
    if (!m_viewer)
        return {};
    // As in the elevation, scenery and the frame do not stand in the way of what lies behind.
    const kiv::CScene::CLocker lock(m_viewer->GetScene());
    kiv::CVisualNode& root = *m_viewer->GetScene().GetRoot();
    root.RemoveChild(m_scenery.get());
    root.RemoveChild(m_frame.get());
    const kiv::CVisualNodePtr met = m_viewer->PickNode(pixel.x(), pixel.y());
    root.AddChild(m_scenery);
    root.AddChild(m_frame);
    return met ? QString::fromStdString(met->GetName()) : QString();
}

QImage BuildingView3D::drawing()
{
    if (!m_viewer)
        return {};
    const kiv::CPrimitiveRenderablePtr frame = m_frame->GetRenderable();
    m_frame->SetRenderable(nullptr);
    const kiv::CImagePtr picture = m_viewer->Snapshot(width(), height());
    m_frame->SetRenderable(frame);
    return picture ? QImage(picture->GetData(), width(), height(), QImage::Format_RGBA8888).copy() : QImage();
}

// ---- events

void BuildingView3D::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!m_viewer)
        createViewer();
}

void BuildingView3D::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    changed();
    emit zoomed();
}

void BuildingView3D::mousePressEvent(QMouseEvent* event)
{
    m_pressed = event->pos();
    m_mayClick = event->button() == Qt::LeftButton;
    forwardMouse(*event);
}

void BuildingView3D::mouseMoveEvent(QMouseEvent* event)
{
    if ((event->pos() - m_pressed).manhattanLength() >= QApplication::startDragDistance())
        m_mayClick = false;
    if (!m_mayClick)
        forwardMouse(*event);
}

void BuildingView3D::mouseReleaseEvent(QMouseEvent* event)
{
    forwardMouse(*event);
    if (m_mayClick && event->button() == Qt::LeftButton)
        emit elementClicked(elementAt(event->pos()));
    m_mayClick = false;
}

// Not for the viewer, which would go back to its first view.
void BuildingView3D::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QString elementId = elementAt(event->pos());
    if (event->button() == Qt::LeftButton && !elementId.isEmpty())
        emit elementDoubleClicked(elementId);
}

void BuildingView3D::forwardMouse(const QMouseEvent& event)
{
    if (m_viewer)
        m_viewer->ProcessEvent(ViewerEventOf(event));
}

void BuildingView3D::wheelEvent(QWheelEvent* event)
{
    if (!m_viewer || !m_viewer->ProcessEvent(ViewerEventOf(*event)))
        return;
    changed();
    emit zoomed();
}
