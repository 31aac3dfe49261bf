#include "ViewerSurface.h"

#include "PictureSource.h"
#include "WindowSurface.h"

#include <QBackingStore>
#include <QEvent>
#include <QPainter>

namespace kiv {

CViewerSurface::CViewerSurface(QWidget& host, IPictureSource& source, bool hasOpenGL)
    : QWidget(&host, Qt::WindowTransparentForInput), m_source(source),
      m_wantsWindow(hasOpenGL && CWindowSurface::IsSupported())
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NativeWindow, m_wantsWindow);
    setMouseTracking(true);
    setFocusPolicy(Qt::NoFocus);
    setGeometry(host.rect());
    letHostBePainted();
    host.installEventFilter(this);
    raise();
    show();
}

CViewerSurface::~CViewerSurface()
{
    closeWindow();
}

void CViewerSurface::SetDirty()
{
    m_dirty = true;
    if (m_window)
        m_window->SetDirty();
    else
        update();
}

// A window with this attribute would make all its children paint on the screen, which they cannot.
void CViewerSurface::letHostBePainted()
{
    if (parentWidget()->isWindow())
        parentWidget()->setAttribute(Qt::WA_PaintOnScreen, false);
}

// ---- the window inside

void CViewerSurface::openWindow()
{
    const bool isThere = m_window && m_window->parent() == windowHandle() && m_window->handle();
    if (!m_wantsWindow || !internalWinId() || isThere)
        return;
    closeWindow();
    // Called from inside an event of the window itself, which must not go at once.
    m_window = new CWindowSurface(*windowHandle(), m_source, [this] {
        m_wantsWindow = false;
        m_window->hide();
        m_window->deleteLater();
        m_window.clear();
        update();
    });
    m_window->Fit(size());
}

void CViewerSurface::closeWindow()
{
    delete m_window.data();
}

// ---- events

bool CViewerSurface::event(QEvent* event)
{
    if (event->type() == QEvent::WinIdChange || event->type() == QEvent::Show)
        openWindow();
    return QWidget::event(event);
}

bool CViewerSurface::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parent() && event->type() == QEvent::Resize)
        setGeometry(parentWidget()->rect());
    if (watched == parent() && event->type() == QEvent::ParentChange)
        letHostBePainted();
    return QWidget::eventFilter(watched, event);
}

void CViewerSurface::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (m_window)
        m_window->Fit(size());
}

bool CViewerSurface::isPaintedElsewhere() const
{
    QPoint offset;
    QBackingStore* store = window()->backingStore();
    return !store || redirected(&offset) != store->paintDevice();
}

void CViewerSurface::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const bool isElsewhere = isPaintedElsewhere();
    if (m_window && !isElsewhere) {
        painter.fillRect(rect(), palette().window());
        return;
    }
    const QSize wanted = size() * devicePixelRatioF();
    if (m_dirty || isElsewhere || m_picture.size() != wanted) {
        m_picture = m_source.DrawImage(wanted);
        m_dirty = false;
    }
    if (!m_picture.isNull())
        painter.drawImage(rect(), m_picture);
}

}  // namespace kiv
