#pragma once

#include <glenox/RefPtr.h>
#include <kiv/PrimitiveRenderable.h>
#include <kiv/StateSet.h>

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace kiv {

/// A place in the scene: what is drawn there, with what, and the nodes below. A node without a state set takes the one
/// of its parent.
class CVisualNode {
public:
    explicit CVisualNode(std::string name = {}) : m_name(std::move(name)) {}

    const std::string& GetName() const { return m_name; }
    void SetRenderable(const CPrimitiveRenderablePtr& renderable) { m_renderable = renderable; }
    const CPrimitiveRenderablePtr& GetRenderable() const { return m_renderable; }
    /// Held as long as it is set; null removes it.
    void SetStateSet(CStateSet* stateSet) { m_stateSet = stateSet; }
    CStateSet* GetStateSet() const { return m_stateSet.get(); }

    /// The scene owns what is below its root.
    void AddChild(const std::shared_ptr<CVisualNode>& child);
    void RemoveChild(const CVisualNode* child);
    const std::vector<std::shared_ptr<CVisualNode>>& GetChildren() const { return m_children; }

private:
    std::string m_name;
    CPrimitiveRenderablePtr m_renderable;
    GRefPtr<CStateSet> m_stateSet;
    std::vector<std::shared_ptr<CVisualNode>> m_children;
};

using CVisualNodePtr = std::shared_ptr<CVisualNode>;

/// A lamp at the camera. Intensity 1 gives a white surface that faces it half of the radiance of a white sky, so that
/// lamp and sky together light a surface as a clear day does.
class CLight {
public:
    explicit CLight(std::string name) : m_name(std::move(name)) {}

    const std::string& GetName() const { return m_name; }
    double GetIntensity() const { return m_intensity; }
    void SetIntensity(double intensity);  ///< negative and not finite become 0

private:
    std::string m_name;
    double m_intensity = 0.5;
};

/// What a viewer shows. Has one light at first, "HeadLamp".
class CScene {
public:
    /// Held while the scene is changed in several steps: nothing is drawn in between.
    class CLocker {
    public:
        explicit CLocker(CScene& scene) : m_guard(scene.m_mutex) {}

    private:
        std::lock_guard<std::recursive_mutex> m_guard;
    };

    CScene();

    const CVisualNodePtr& GetRoot() const { return m_root; }
    /// Null when there is none of the name. The scene's.
    CLight* FindLight(const std::string& name);
    const std::vector<std::unique_ptr<CLight>>& GetLights() const { return m_lights; }
    /// Lowest and highest corner of all that is drawable; false when nothing is.
    bool GetBounds(CVec3<float>& lowest, CVec3<float>& highest) const;
    /// The radius of the sphere around the point that holds all that is drawable.
    double GetRadius(const CVec3<double>& centre) const;

private:
    friend class CLocker;

    CVisualNodePtr m_root;
    std::vector<std::unique_ptr<CLight>> m_lights;
    std::recursive_mutex m_mutex;
};

}  // namespace kiv
