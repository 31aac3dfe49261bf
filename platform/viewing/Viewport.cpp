#include <kiv/Viewport.h>

namespace kiv {

void CViewport::SetSkyBox(bool show, const CSkybox::Faces& faces, const CShaderProgramPtr& program)
{
    m_sky = show && program ? std::make_shared<CSkybox>(faces, program) : nullptr;
}

}  // namespace kiv
