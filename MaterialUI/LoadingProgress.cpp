#include "LoadingProgress.h"

#include <QApplication>
#include <QProgressBar>
#include <QProgressDialog>

namespace {

constexpr qint64 FrameMs = 16;

}  // namespace

CLoadingProgress::CLoadingProgress(QWidget& owner, const QString& title, const QString& label, const QString& cancel,
                                   int steps)
    : m_dialog(new QProgressDialog(label, cancel, 0, steps, &owner))
{
    m_bar = m_dialog->findChild<QProgressBar*>();
    m_bar->setTextVisible(false);  // it would be measured for each step
    m_dialog->setWindowTitle(title);
    m_dialog->setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_dialog->setModal(true);
    m_dialog->setMinimumDuration(0);
    m_dialog->setAutoReset(false);
    m_dialog->setValue(0);
    m_dialog->show();
    processEvents();
}

CLoadingProgress::~CLoadingProgress()
{
    if (!m_dialog)
        return;
    const bool isActive = !QApplication::activeWindow() || m_dialog->isActiveWindow();
    QWidget* owner = m_dialog->parentWidget()->window();
    m_dialog->hide();
    m_dialog->deleteLater();
    // A window manager that had no time to see the dialog come would leave the keyboard with nobody.
    if (isActive && owner->isVisible())
        owner->activateWindow();
}

// The value goes to the bar itself: the dialog's own operation would process events each time.
void CLoadingProgress::Advance()
{
    if (!m_bar)
        return;
    m_bar->setValue(m_bar->value() + 1);
    if (m_sinceEvents.hasExpired(FrameMs))
        processEvents();
}

bool CLoadingProgress::IsOver() const
{
    return !m_dialog || m_dialog->wasCanceled();
}

// Between frames the bar must not paint itself for each value.
void CLoadingProgress::processEvents()
{
    m_bar->setUpdatesEnabled(true);
    QCoreApplication::processEvents();
    if (m_bar)
        m_bar->setUpdatesEnabled(false);
    m_sinceEvents.start();
}
