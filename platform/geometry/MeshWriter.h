#pragma once

#include <kiv/TriangleMesh.h>
#include <kiv/VectorMath.h>

namespace kiv {

constexpr double Pi = 3.14159265358979323846;

/// Appends to a mesh, in doubles.
class CMeshWriter {
public:
    explicit CMeshWriter(CTriangleMesh& mesh) : m_mesh(mesh) {}

    /// The number of the new vertex.
    unsigned AddVertex(const CVec3<double>& vertex, const CVec3<double>& normal, const CVec2<double>& texture)
    {
        m_mesh.vertices.push_back(VectorCast<float>(vertex));
        m_mesh.normals.push_back(VectorCast<float>(normal));
        m_mesh.textureCoordinates.push_back(VectorCast<float>(texture));
        return unsigned(m_mesh.vertices.size() - 1);
    }

    void AddTriangle(unsigned a, unsigned b, unsigned c) { m_mesh.indices.insert(m_mesh.indices.end(), {a, b, c}); }

    /// Two triangles, for corners that go round counter-clockwise.
    void AddQuad(unsigned a, unsigned b, unsigned c, unsigned d)
    {
        AddTriangle(a, b, c);
        AddTriangle(a, c, d);
    }

private:
    CTriangleMesh& m_mesh;
};

}  // namespace kiv
