#include "Picking.h"

#include <cmath>
#include <limits>

namespace kiv {

namespace {

QVector3D toQt(const CVec3<float>& v)
{
    return {v.x, v.y, v.z};
}

/// Moeller and Trumbore 1997. The distance along the ray, infinite for a miss.
float hitDistance(const CRay& ray, const QVector3D& a, const QVector3D& b, const QVector3D& c)
{
    constexpr float miss = std::numeric_limits<float>::infinity();
    const QVector3D p = QVector3D::crossProduct(ray.direction, c - a);
    const float determinant = QVector3D::dotProduct(b - a, p);
    if (std::abs(determinant) < 1e-12F)
        return miss;
    const float u = QVector3D::dotProduct(ray.origin - a, p) / determinant;
    const QVector3D q = QVector3D::crossProduct(ray.origin - a, b - a);
    const float v = QVector3D::dotProduct(ray.direction, q) / determinant;
    const float distance = QVector3D::dotProduct(c - a, q) / determinant;
    return u >= 0 && v >= 0 && u + v <= 1 && distance > 0 ? distance : miss;
}

float nearestHit(const CPrimitiveRenderable& renderable, const CRay& ray)
{
    float nearest = std::numeric_limits<float>::infinity();
    if (!renderable.IsDrawable())
        return nearest;
    const auto& vertices = renderable.GetVertexArray();
    const auto& indices = renderable.GetIndexArray();
    for (std::size_t i = 0; i + 2 < indices.size(); i += 3)
        nearest = std::min(nearest, hitDistance(ray, toQt(vertices[indices[i]]), toQt(vertices[indices[i + 1]]),
                                                toQt(vertices[indices[i + 2]])));
    return nearest;
}

void pick(const CVisualNodePtr& node, const CRay& ray, float& nearest, CVisualNodePtr& found)
{
    const float distance = node->GetRenderable() ? nearestHit(*node->GetRenderable(), ray) : nearest;
    if (distance < nearest) {
        nearest = distance;
        found = node;
    }
    for (const CVisualNodePtr& child : node->GetChildren())
        pick(child, ray, nearest, found);
}

}  // namespace

CVisualNodePtr PickAlong(const CScene& scene, const CRay& ray)
{
    float nearest = std::numeric_limits<float>::infinity();
    CVisualNodePtr found;
    pick(scene.GetRoot(), ray, nearest, found);
    return found;
}

}  // namespace kiv
