#pragma once

#include <kiv/Camera.h>
#include <kiv/Color.h>
#include <kiv/RenderPass.h>
#include <kiv/Scene.h>
#include <kiv/Viewport.h>

#include <QMatrix4x4>

namespace kiv {

class CRenderDevice;
class CLinkedProgram;
struct CSkyTextures;

/// What a frame is drawn from.
struct CFrame {
    CScene& scene;
    const CCamera& camera;
    CViewport& viewport;
    CRenderPassChain& passes;
    CColor background;
    double aspect = 1;   ///< width over height
    bool isFine = true;  ///< false while the view moves
};

/// The matrix from the world to the clip space of OpenGL.
QMatrix4x4 ViewProjection(const CCamera& camera, double aspect);

/// Draws frames into the frame buffer in use: what is opaque, then the sky where nothing is, then what is transparent
/// from the back to the front.
class CSceneRenderer {
public:
    explicit CSceneRenderer(CRenderDevice& device) : m_device(device) {}

    void Draw(const CFrame& frame);
    /// Asks for the pictures that the frame will be drawn with, and draws nothing.
    void Prefetch(const CFrame& frame);

    const std::string& GetReason() const { return m_reason; }

private:
    struct Item {
        CPrimitiveRenderablePtr renderable;
        const CStateSet* stateSet;
        float distance;
        bool isClosed;  // and seen from outside
    };

    void beginFrame(const CFrame& frame);
    void findEnvironment(const CFrame& frame);
    void collect(const CVisualNode& node, const CStateSet* inherited);
    Item itemOf(const CPrimitiveRenderablePtr& renderable, const CStateSet* stateSet);
    void setCulling(const Item& item);
    void drawDepths();
    void drawTransparent(const CFrame& frame);
    void drawItem(const Item& item, const CFrame& frame);
    unsigned bindTextures(const CStateSet& stateSet);
    unsigned skyFeatures(const CStateSet& stateSet) const;
    void setMaterial(CLinkedProgram& program, const CStateSet& stateSet);
    void setLight(CLinkedProgram& program, const CFrame& frame);
    void drawSky(const CFrame& frame);

    CRenderDevice& m_device;
    std::vector<Item> m_opaque;
    std::vector<Item> m_transparent;
    QMatrix4x4 m_viewProjection;
    CVec3<double> m_eye;
    double m_near = 0;  ///< what is nearer to the eye may be cut off
    const CSkyTextures* m_environment = nullptr;
    GRefPtr<CStateSet> m_fallback = new CStateSet;  ///< for a node without any
    CPrimitiveRenderablePtr m_skyBody;
    std::string m_reason;
};

}  // namespace kiv
