#pragma once

#include "Building.h"

#include <kiv/TriangleMesh.h>

#include <vector>

/// An element's bodies as triangles: front and back face with their holes, and the walls between them. x right, y away
/// from the viewer, z up, in metres; texture coordinates are metres on the surface, so that courses of bricks go on
/// around a corner.
class BuildingMesh {
public:
    struct Edge {
        kiv::CVec3<float> from;
        kiv::CVec3<float> to;
    };

    BuildingMesh(const BuildingElement& element, const QRectF& extent);

    /// Closed, without vertices in common between faces that meet at an edge. Empty for what is not shown in space.
    const kiv::CTriangleMesh& mesh() const { return m_mesh; }
    /// The rims of front and back faces, and the edges that go from one to the other where the outline has corners.
    const std::vector<Edge>& edges() const { return m_edges; }

private:
    class Extrusion;

    kiv::CTriangleMesh m_mesh;
    std::vector<Edge> m_edges;
};
