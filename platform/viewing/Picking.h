#pragma once

#include <kiv/Scene.h>

#include <QVector3D>

namespace kiv {

/// A straight line from an origin.
struct CRay {
    QVector3D origin;
    QVector3D direction;
};

/// The node whose triangles the ray meets first, or null. Every triangle is asked, from both sides.
CVisualNodePtr PickAlong(const CScene& scene, const CRay& ray);

}  // namespace kiv
