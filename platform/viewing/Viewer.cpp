#include <kiv/Viewer.h>

#include "FrameTarget.h"
#include "Picking.h"
#include "PictureSource.h"
#include "ViewerInput.h"
#include "ViewerSurface.h"
#include "gl/RenderDevice.h"
#include "gl/SceneRenderer.h"

#include <QOpenGLPaintDevice>
#include <QPainter>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include <cmath>
#include <cstring>

namespace kiv {

namespace {

constexpr int MaxSide = 8192;
constexpr double FitMargin = 1.08;
constexpr int Samples = 4;
constexpr int RestMs = 120;  // without a movement, until the picture is drawn again with smooth edges

bool isGood(const QSize& size)
{
    return size.width() > 0 && size.height() > 0 && size.width() <= MaxSide && size.height() <= MaxSide;
}

/// The directions of x, y and z in the lower left corner of the frame buffer in use.
void paintAxes(const QSize& size, const CCamera& camera)
{
    QMatrix4x4 turn;
    const CVec3<double> eye = camera.GetEye();
    const CVec3<double> up = camera.GetUp();
    const CVec3<double> centre = camera.GetCentre();
    turn.lookAt({}, QVector3D(float(centre.x - eye.x), float(centre.y - eye.y), float(centre.z - eye.z)),
                QVector3D(float(up.x), float(up.y), float(up.z)));
    QOpenGLPaintDevice device(size);
    QPainter painter(&device);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF origin(36, size.height() - 36);
    const Qt::GlobalColor colors[] = {Qt::red, Qt::darkGreen, Qt::blue};
    for (int i = 0; i < 3; ++i) {
        QVector3D axis;
        axis[i] = 24;
        const QVector3D tip = turn.mapVector(axis);
        painter.setPen(QPen(colors[i], 2));
        painter.drawLine(origin, origin + QPointF(double(tip.x()), -double(tip.y())));
    }
}

}  // namespace

struct CViewer::Private : IPictureSource {
    explicit Private(std::uintptr_t window) : host(window ? QWidget::find(WId(window)) : nullptr)
    {
        rest.setSingleShot(true);
        rest.setInterval(RestMs);
        QObject::connect(&rest, &QTimer::timeout, [this] { setDirty(); });
        if (!device->IsCapable())
            return;
        renderer = std::make_unique<CSceneRenderer>(*device);
        listener = device->AddListener([this] { setDirty(); });
    }

    ~Private() override
    {
        delete surface.data();
        if (!renderer)
            return;
        device->RemoveListener(listener);
        const CRenderDevice::CCurrent current(*device);
        still.Release();
        moving.Release();
        renderer.reset();
    }

    void setDirty()
    {
        if (surface)
            surface->SetDirty();
    }

    QSize windowSize() const { return host ? host->size() : QSize(1, 1); }
    double aspect() const { return double(qMax(1, windowSize().width())) / qMax(1, windowSize().height()); }

    QImage DrawImage(const QSize& size) override
    {
        if (!isGood(size))
            return {};
        QImage picture = drawnImage(size);
        if (picture.isNull()) {
            picture = QImage(size, QImage::Format_RGB32);
            picture.fill(QColor(background.r, background.g, background.b));
        }
        return picture;
    }

    /// Null when nothing can be drawn.
    QImage drawnImage(const QSize& size)
    {
        const CRenderDevice::CCurrent current(*device);
        const CFrameTarget* target = current ? drawScene(size) : nullptr;
        return target ? target->ReadBack() : QImage();
    }

    /// What the next frame is drawn with is there when this returns.
    void waitForPictures(const QSize& size)
    {
        const CRenderDevice::CCurrent current(*device);
        if (!current)
            return;
        const CScene::CLocker locker(scene);
        renderer->Prefetch(frameOf(size));
        device->GetTextures().WaitForPending();
        device->GetSkies().WaitForPending();
    }

    bool DrawWindow(QWindow& window, const QSize& size) override
    {
        if (!isGood(size))
            return true;  // not worth another way
        CRenderDevice::CCurrent current(*device, &window);
        CFrameTarget* target = current ? drawScene(size) : nullptr;
        if (!target)
            return false;
        target->CopyToSurface();
        current.Show();
        return true;
    }

    CFrame frameOf(const QSize& size)
    {
        return {scene, camera, viewport, passes, background, double(size.width()) / size.height(), !rest.isActive()};
    }

    /// Null when nothing can be drawn. The context must be current.
    CFrameTarget* drawScene(const QSize& size)
    {
        const CScene::CLocker locker(scene);
        const CFrame frame = frameOf(size);
        const auto draw = [&] {
            renderer->Draw(frame);
            if (options.IsViewAxesEnabled())
                paintAxes(size, camera);
        };
        CFrameTarget& target = frame.isFine ? still : moving;
        if (!renderer || !target.Draw(size, draw))
            return nullptr;
        ++frames;
        return &target;
    }

    std::shared_ptr<CRenderDevice> device = CRenderDevice::Shared();
    QPointer<QWidget> host;
    QPointer<CViewerSurface> surface;
    CViewerOptions options;
    CCamera camera;
    CCamera home;
    CScene scene;
    CViewport viewport;
    CRenderPassChain passes;
    CColor background{200, 200, 200};
    CFrameTarget still{Samples};
    CFrameTarget moving{0};
    QTimer rest;  // runs while the view moves: then frames are to be fast, and afterwards fine
    std::unique_ptr<CSceneRenderer> renderer;  // null when nothing can be drawn
    CViewerInput input;
    int listener = 0;
    unsigned frames = 0;
};

CViewer::CViewer(std::uintptr_t window, int /*automaticFramebuffer*/) : m(std::make_unique<Private>(window))
{
    if (m->host)
        m->surface = new CViewerSurface(*m->host, *m, m->renderer != nullptr);
}

CViewer::~CViewer() = default;

void CViewer::SetDefault()
{
    m->options = {};
    m->camera = {};
    m->home = {};
    m->background = {200, 200, 200};
    ZoomAll();
}

CViewerOptions& CViewer::GetOptions()
{
    return m->options;
}

CCamera& CViewer::GetCamera()
{
    return m->camera;
}

CScene& CViewer::GetScene()
{
    return m->scene;
}

CViewport& CViewer::GetViewport()
{
    return m->viewport;
}

CRenderPassChain& CViewer::GetRenderPassChain()
{
    return m->passes;
}

void CViewer::SetBackgroundColor(const CColor& color, int /*gradient*/)
{
    m->background = color;
    SetDirty();
}

CColor CViewer::GetBackgroundColor() const
{
    return m->background;
}

void CViewer::SetViewPoint(int viewPoint)
{
    m->camera.SetViewPoint(viewPoint);
    m->home = m->camera;
    SetDirty();
}

void CViewer::ZoomAll()
{
    CVec3<float> low;
    CVec3<float> high;
    if (m->scene.GetBounds(low, high)) {
        const CVec3<double> centre((double(low.x) + high.x) / 2, (double(low.y) + high.y) / 2,
                                   (double(low.z) + high.z) / 2);
        // The way back leads to the whole scene too, but to the side that was chosen and not to where the user turned.
        for (CCamera* camera : {&m->camera, &m->home})
            camera->Fit(centre, m->scene.GetRadius(centre) * FitMargin, m->aspect());
    }
    SetDirty();
}

void CViewer::SetDirty()
{
    m->setDirty();
}

bool CViewer::ProcessEvent(const CEventArgs& event)
{
    const auto* mouse = dynamic_cast<const CMouseEventArgs*>(&event);
    if (!mouse || !m->input.Process(*mouse, m->windowSize().height(), m->camera, m->home))
        return false;
    if (m->renderer)
        m->rest.start();
    SetDirty();
    return true;
}

CVisualNodePtr CViewer::PickNode(int x, int y)
{
    const QSize size = m->windowSize();
    if (size.isEmpty())
        return nullptr;
    const QMatrix4x4 back = ViewProjection(m->camera, m->aspect()).inverted();
    const float right = 2 * (float(x) + 0.5F) / float(size.width()) - 1;
    const float up = 1 - 2 * (float(y) + 0.5F) / float(size.height());
    const QVector3D near = back.map(QVector3D(right, up, -1));
    const QVector3D far = back.map(QVector3D(right, up, 1));
    const CScene::CLocker locker(m->scene);
    return PickAlong(m->scene, {near, (far - near).normalized()});
}

CImagePtr CViewer::Snapshot(int width, int height)
{
    if (!isGood({width, height}) || !m->renderer)
        return nullptr;
    m->rest.stop();
    m->waitForPictures({width, height});
    const QImage picture = m->drawnImage({width, height}).convertToFormat(QImage::Format_RGBA8888);
    if (picture.isNull())
        return nullptr;
    auto image = std::make_shared<CImage>(width, height);
    for (int y = 0; y < height; ++y)
        std::memcpy(image->GetData() + std::size_t(y) * std::size_t(width) * 4, picture.constScanLine(y),
                    std::size_t(width) * 4);
    return image;
}

std::string CViewer::GetReason() const
{
    return m->renderer && m->device->GetReason().empty() ? m->renderer->GetReason() : m->device->GetReason();
}

unsigned CViewer::GetFrameCount() const
{
    return m->frames;
}

}  // namespace kiv
