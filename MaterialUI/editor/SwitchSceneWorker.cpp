#include "SwitchSceneWorker.h"

#include "PreviewBodies.h"

#include <kiv/Viewer.h>

namespace {

bool replaceBody(kiv::CScene& scene, kiv::CVisualNode& node, const QString& shape)
{
    const kiv::CScene::CLocker lock(scene);
    const kiv::CPrimitiveRenderablePtr body = MakePreviewBody(shape);
    if (body)
        node.SetRenderable(body);
    return body != nullptr;
}

}  // namespace

bool CSwitchSceneWorker::Run(kiv::CViewer* viewer, kiv::CVisualNode* node) const
{
    if (!viewer || !node || !replaceBody(viewer->GetScene(), *node, m_shape))
        return false;
    viewer->ZoomAll();
    return true;
}
