#include <kiv/RenderPass.h>

namespace kiv {

CRenderPassChain::CRenderPassChain()
{
    m_passes.push_back(std::make_unique<CRenderScenePass>("kiv_main_pass"));
}

CRenderPass* CRenderPassChain::Find(const std::string& name) const
{
    for (const auto& pass : m_passes) {
        if (pass->GetName() == name)
            return pass.get();
    }
    return nullptr;
}

}  // namespace kiv
