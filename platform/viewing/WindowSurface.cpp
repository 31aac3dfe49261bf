#include "WindowSurface.h"

#include "PictureSource.h"
#include "gl/RenderDevice.h"

#include <QEvent>
#include <QGuiApplication>

#include <utility>

namespace kiv {

bool CWindowSurface::IsSupported()
{
    return QGuiApplication::platformName() == "xcb";
}

CWindowSurface::CWindowSurface(QWindow& below, IPictureSource& source, std::function<void()> refused)
    : QWindow(&below), m_source(source), m_fitted(below.size()), m_refused(std::move(refused))
{
    setSurfaceType(QSurface::OpenGLSurface);
    setFormat(CRenderDevice::WantedFormat());
    setFlags(Qt::WindowTransparentForInput | Qt::WindowDoesNotAcceptFocus);
    setGeometry(QRect(QPoint(), below.size()));
    show();
}

void CWindowSurface::SetDirty()
{
    if (canBeSeen())
        requestUpdate();
}

void CWindowSurface::Fit(const QSize& size)
{
    m_fitted = size;
    resize(size);
}

bool CWindowSurface::event(QEvent* event)
{
    if (event->type() == QEvent::UpdateRequest)
        draw();
    return QWindow::event(event);
}

void CWindowSurface::exposeEvent(QExposeEvent*)
{
    draw();
}

void CWindowSurface::resizeEvent(QResizeEvent*)
{
    draw();
}

// A window inside a hidden one counts as exposed, and may be exposed before the one around it.
bool CWindowSurface::canBeSeen() const
{
    const QWindow* around = parent();
    while (around && around->isVisible() && !(around->windowStates() & Qt::WindowMinimized))
        around = around->parent();
    return isExposed() && !around;
}

void CWindowSurface::draw()
{
    if (canBeSeen() && m_refused && !m_source.DrawWindow(*this, m_fitted * devicePixelRatio()))
        std::exchange(m_refused, nullptr)();
}

}  // namespace kiv
