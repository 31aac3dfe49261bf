#include <kiv/Scene.h>

#include <algorithm>
#include <cmath>

namespace kiv {

namespace {

void grow(const CVisualNode& node, bool& found, CVec3<float>& lowest, CVec3<float>& highest)
{
    CVec3<float> low;
    CVec3<float> high;
    if (node.GetRenderable() && node.GetRenderable()->GetBounds(low, high)) {
        for (std::size_t i = 0; i < 3; ++i) {
            lowest[i] = found ? std::min(lowest[i], low[i]) : low[i];
            highest[i] = found ? std::max(highest[i], high[i]) : high[i];
        }
        found = true;
    }
    for (const CVisualNodePtr& child : node.GetChildren())
        grow(*child, found, lowest, highest);
}

double farthest(const CVisualNode& node, const CVec3<double>& centre)
{
    double radius = 0;
    if (node.GetRenderable()) {
        for (const CVec3<float>& v : node.GetRenderable()->GetVertexArray())
            radius = std::max(radius, std::hypot(v.x - centre.x, v.y - centre.y, v.z - centre.z));
    }
    for (const CVisualNodePtr& child : node.GetChildren())
        radius = std::max(radius, farthest(*child, centre));
    return radius;
}

}  // namespace

void CVisualNode::AddChild(const std::shared_ptr<CVisualNode>& child)
{
    if (child)
        m_children.push_back(child);
}

void CVisualNode::RemoveChild(const CVisualNode* child)
{
    m_children.erase(std::remove_if(m_children.begin(), m_children.end(),
                                    [child](const CVisualNodePtr& node) { return node.get() == child; }),
                     m_children.end());
}

void CLight::SetIntensity(double intensity)
{
    m_intensity = std::isfinite(intensity) && intensity > 0 ? intensity : 0;
}

CScene::CScene() : m_root(std::make_shared<CVisualNode>("root"))
{
    m_lights.push_back(std::make_unique<CLight>("HeadLamp"));
}

CLight* CScene::FindLight(const std::string& name)
{
    for (const auto& light : m_lights) {
        if (light->GetName() == name)
            return light.get();
    }
    return nullptr;
}

bool CScene::GetBounds(CVec3<float>& lowest, CVec3<float>& highest) const
{
    bool found = false;
    grow(*m_root, found, lowest, highest);
    return found;
}

double CScene::GetRadius(const CVec3<double>& centre) const
{
    return farthest(*m_root, centre);
}

}  // namespace kiv
