#include "SetStateSetWorker.h"

#include <kiv/Viewer.h>

bool CSetStateSetWorker::Run(kiv::CViewer* viewer, kiv::CVisualNode* node) const
{
    if (!viewer || !node)
        return false;
    {
        const kiv::CScene::CLocker lock(viewer->GetScene());
        node->SetStateSet(m_stateSet.get());
    }
    viewer->SetDirty();
    return true;
}
