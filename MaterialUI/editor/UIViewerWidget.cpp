#include "UIViewerWidget.h"

#include "BackgroundWorker.h"
#include "PreviewSkybox.h"
#include "SetStateSetWorker.h"
#include "SwitchSceneWorker.h"
#include "ViewerEvents.h"

#include <kiv/Viewer.h>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

namespace {

const QColor DefaultBackground(200, 200, 200, 255);
constexpr double HeadLampIntensity = 1.0;

}  // namespace

CUIViewerWidget::CUIViewerWidget(QWidget* parent, int firstInterval, int secondInterval)
    : QWidget(parent), m_firstInterval(firstInterval), m_secondInterval(secondInterval),
      m_backgroundColor(DefaultBackground), m_timer(this)
{
    setAttribute(Qt::WA_PaintOnScreen);
    setAttribute(Qt::WA_NoSystemBackground);
    fillBackground();
    setAutoFillBackground(true);
    setFocusPolicy(Qt::WheelFocus);
    m_timer.setInterval(m_firstInterval);
    connect(&m_timer, SIGNAL(timeout()), this, SLOT(onTimer()));
    m_timer.start();
}

CUIViewerWidget::~CUIViewerWidget() = default;

void CUIViewerWidget::SetPlaceholder(QWidget* placeholder)
{
    if (m_viewer)
        return;
    m_placeholder = placeholder;
    setVisible(!placeholder);
}

void CUIViewerWidget::fillBackground()
{
    QPalette filled = palette();
    filled.setColor(QPalette::Window, m_backgroundColor);
    setPalette(filled);
}

// ---- what is asked for, now or later

void CUIViewerWidget::SetBackgroundColor(const QColor& color)
{
    m_backgroundColor = color;
    fillBackground();
    if (m_viewer)
        CBackgroundWorker(color).Run(m_viewer.get());
    else if (m_pendingBackground)
        m_pendingBackground->SetColor(color);
    else
        m_pendingBackground = std::make_unique<CBackgroundWorker>(color);
}

void CUIViewerWidget::SwitchScene(const QString& shape)
{
    if (m_viewer) {
        // Between the ticks an older wish may still wait, and would undo this one.
        if (CSwitchSceneWorker(shape).Run(m_viewer.get(), m_node.get()))
            m_pendingScene.reset();
    } else if (m_pendingScene) {
        m_pendingScene->SetShape(shape);
    } else {
        m_pendingScene = std::make_unique<CSwitchSceneWorker>(shape);
    }
}

void CUIViewerWidget::SetStateSet(kiv::CStateSet* stateSet)
{
    if (!stateSet)
        return;
    if (m_stateSetWorker)
        m_stateSetWorker->SetStateSet(stateSet);
    else
        m_stateSetWorker = std::make_unique<CSetStateSetWorker>(stateSet);
    m_stateSetWorker->Run(m_viewer.get(), m_node.get());
}

// ---- the two ticks

void CUIViewerWidget::onTimer()
{
    m_timer.stop();
    disconnect(&m_timer, SIGNAL(timeout()), this, SLOT(onTimer()));
    createViewer();
    runPendingBackground();
    setUpSky();
    show();
    if (m_placeholder)
        m_placeholder->hide();
    m_timer.setInterval(m_secondInterval);
    connect(&m_timer, SIGNAL(timeout()), this, SLOT(onTimer2()));
    m_timer.start();
}

void CUIViewerWidget::createViewer()
{
    m_viewer = std::make_unique<kiv::CViewer>(winId(), 0);
    m_viewer->SetDefault();
    m_viewer->GetOptions().SetViewAxesEnabled(false);
    m_viewer->GetCamera().SetType(kiv::CCamera::Perspective, 1);
    m_viewer->GetOptions().SetAutoAdjustRotationCenter(false);
    m_viewer->SetViewPoint(kiv::CCamera::ViewIsometric);
    m_node = std::make_shared<kiv::CVisualNode>("preview");
    m_viewer->GetScene().GetRoot()->AddChild(m_node);
    if (kiv::CLight* lamp = m_viewer->GetScene().FindLight("HeadLamp"))
        lamp->SetIntensity(HeadLampIntensity);
}

void CUIViewerWidget::runPendingBackground()
{
    if (m_pendingBackground && m_pendingBackground->Run(m_viewer.get()))
        m_pendingBackground.reset();
}

void CUIViewerWidget::setUpSky()
{
    SetUpPreviewSkybox(*m_viewer, m_skyBoxFolder);
    if (!m_isSkyShown)
        ShowSky(false);
}

void CUIViewerWidget::ShowSky(bool shown)
{
    m_isSkyShown = shown;
    const auto faces = m_viewer ? PreviewSkyboxFaces(m_skyBoxFolder) : std::nullopt;
    if (!faces)
        return;
    m_viewer->GetViewport().SetSkyBox(shown, *faces, PreviewSkyboxProgram());
    m_viewer->SetDirty();
}

void CUIViewerWidget::onTimer2()
{
    m_timer.stop();
    if (m_pendingScene && m_pendingScene->Run(m_viewer.get(), m_node.get()))
        m_pendingScene.reset();
    if (m_stateSetWorker)
        m_stateSetWorker->Run(m_viewer.get(), m_node.get());
}

// ---- input

void CUIViewerWidget::keyPressEvent(QKeyEvent* event)
{
    if (!forwardKey(*event))
        QWidget::keyPressEvent(event);
}

void CUIViewerWidget::keyReleaseEvent(QKeyEvent* event)
{
    if (!forwardKey(*event))
        QWidget::keyReleaseEvent(event);
}

// What the viewer has no use for goes on to the dialog: Escape closes it.
bool CUIViewerWidget::forwardKey(const QKeyEvent& event)
{
    return m_viewer && m_viewer->ProcessEvent(ViewerEventOf(event));
}

void CUIViewerWidget::mousePressEvent(QMouseEvent* event)
{
    forwardMouse(*event);
}

void CUIViewerWidget::mouseReleaseEvent(QMouseEvent* event)
{
    forwardMouse(*event);
}

void CUIViewerWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    forwardMouse(*event);
}

void CUIViewerWidget::mouseMoveEvent(QMouseEvent* event)
{
    forwardMouse(*event);
}

// A press that was let through would give the drag behind it to the parent.
void CUIViewerWidget::forwardMouse(QMouseEvent& event)
{
    event.setAccepted(m_viewer != nullptr);
    if (m_viewer)
        m_viewer->ProcessEvent(ViewerEventOf(event));
}

void CUIViewerWidget::wheelEvent(QWheelEvent* event)
{
    event->setAccepted(m_viewer && m_viewer->ProcessEvent(ViewerEventOf(*event)));
}
