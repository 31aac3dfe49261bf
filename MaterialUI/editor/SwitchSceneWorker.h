#pragma once

#include <QObject>

namespace kiv {
class CViewer;
class CVisualNode;
}  // namespace kiv

/// Puts another body on show and fits the view to it. A deferred command of the user-interface thread, not a thread.
class CSwitchSceneWorker : public QObject {
    Q_OBJECT

public:
    explicit CSwitchSceneWorker(const QString& shape) : m_shape(shape) {}

    void SetShape(const QString& shape) { m_shape = shape; }
    /// True when it was done. False, with the body that is there kept, without viewer or node and for a shape that
    /// nobody knows.
    bool Run(kiv::CViewer* viewer, kiv::CVisualNode* node) const;

private:
    QString m_shape;
};
