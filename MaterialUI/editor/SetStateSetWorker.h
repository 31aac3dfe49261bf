#pragma once

#include <glenox/RefPtr.h>
#include <kiv/StateSet.h>

#include <QObject>

namespace kiv {
class CViewer;
class CVisualNode;
}  // namespace kiv

/// Draws the preview body with an appearance's render state. The view stays. A deferred command of the user-interface
/// thread, not a thread.
class CSetStateSetWorker : public QObject {
    Q_OBJECT

public:
    explicit CSetStateSetWorker(kiv::CStateSet* stateSet) : m_stateSet(stateSet) {}

    /// Held until another one is set.
    void SetStateSet(kiv::CStateSet* stateSet) { m_stateSet = stateSet; }
    /// True when it was done; false without viewer or node.
    bool Run(kiv::CViewer* viewer, kiv::CVisualNode* node) const;

private:
    GRefPtr<kiv::CStateSet> m_stateSet;
};
