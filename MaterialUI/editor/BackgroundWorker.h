#pragma once

#include <QColor>
#include <QObject>

namespace kiv {
class CViewer;
}

/// Gives a viewer its background colour. A deferred command of the user-interface thread, not a thread.
class CBackgroundWorker : public QObject {
    Q_OBJECT

public:
    explicit CBackgroundWorker(const QColor& color) : m_color(color) {}

    void SetColor(const QColor& color) { m_color = color; }
    /// True when it was done; false without a viewer.
    bool Run(kiv::CViewer* viewer) const;

private:
    QColor m_color;
};
