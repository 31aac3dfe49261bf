#include "BackgroundWorker.h"

#include <kiv/Viewer.h>

bool CBackgroundWorker::Run(kiv::CViewer* viewer) const
{
    if (!viewer)
        return false;
    viewer->SetBackgroundColor(kiv::CColor(m_color.red(), m_color.green(), m_color.blue()));
    return true;
}
