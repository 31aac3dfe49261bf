#pragma once

#include <QElapsedTimer>
#include <QPointer>

class QProgressBar;
class QProgressDialog;
class QWidget;

/// A modal progress dialog for a loop of many short steps. Events are processed once a frame and not for each step,
/// which would cost more than the steps.
class CLoadingProgress {
public:
    /// Shown at once.
    CLoadingProgress(QWidget& owner, const QString& title, const QString& label, const QString& cancel, int steps);
    ~CLoadingProgress();
    CLoadingProgress(const CLoadingProgress&) = delete;
    CLoadingProgress& operator=(const CLoadingProgress&) = delete;

    /// One step is done. Events may be processed, after which the owner may be gone.
    void Advance();
    /// The user cancelled, or the owner is gone.
    bool IsOver() const;

private:
    void processEvents();

    QPointer<QProgressDialog> m_dialog;
    QPointer<QProgressBar> m_bar;
    QElapsedTimer m_sinceEvents;
};
