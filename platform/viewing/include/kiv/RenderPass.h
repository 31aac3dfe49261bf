#pragma once

#include <kiv/Sky.h>

#include <memory>
#include <string>
#include <vector>

namespace kiv {

/// A step of drawing a frame.
class CRenderPass {
public:
    explicit CRenderPass(std::string name) : m_name(std::move(name)) {}
    virtual ~CRenderPass() = default;

    const std::string& GetName() const { return m_name; }

private:
    std::string m_name;
};

/// Draws the surfaces of a scene; keeps what they have in common.
class CRenderPoolRenderer {
public:
    /// What lights the surfaces and is mirrored in them; null for the lamps alone.
    void SetEnvironment(const std::shared_ptr<CSkybox>& environment) { m_environment = environment; }
    const std::shared_ptr<CSkybox>& GetEnvironment() const { return m_environment; }

private:
    std::shared_ptr<CSkybox> m_environment;
};

/// The pass that draws the scene.
class CRenderScenePass : public CRenderPass {
public:
    using CRenderPass::CRenderPass;

    CRenderPoolRenderer& GetPoolRenderer() { return m_renderer; }

private:
    CRenderPoolRenderer m_renderer;
};

/// The passes in their order. A viewer has one, "kiv_main_pass", a CRenderScenePass.
class CRenderPassChain {
public:
    CRenderPassChain();

    /// Null when there is none of the name.
    CRenderPass* Find(const std::string& name) const;

private:
    std::vector<std::unique_ptr<CRenderPass>> m_passes;
};

}  // namespace kiv
