#include "ViewerSurface.h"

#include <QEvent>
#include <QPainter>

namespace kiv {

CViewerSurface::CViewerSurface(QWidget& host, std::function<QImage(const QSize&)> draw)
    : QWidget(&host), m_draw(std::move(draw))
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusPolicy(Qt::NoFocus);
    setGeometry(host.rect());
    host.installEventFilter(this);
    raise();
    show();
}

void CViewerSurface::SetDirty()
{
    m_dirty = true;
    update();
}

bool CViewerSurface::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parent() && event->type() == QEvent::Resize)
        setGeometry(parentWidget()->rect());
    return QWidget::eventFilter(watched, event);
}

void CViewerSurface::paintEvent(QPaintEvent*)
{
    const QSize wanted = size() * devicePixelRatioF();
    if (m_dirty || m_picture.size() != wanted) {
        m_picture = m_draw(wanted);
        m_dirty = false;
    }
    QPainter painter(this);
    if (!m_picture.isNull())
        painter.drawImage(rect(), m_picture);
}

}  // namespace kiv
