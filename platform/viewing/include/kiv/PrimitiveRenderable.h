#pragma once

#include <kiv/TriangleMesh.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace kiv {

/// Geometry that is drawn as it is: arrays of the same length, and indices into them.
class CPrimitiveRenderable {
public:
    static constexpr int Triangles = 11;  ///< indexed triangles, the only type that is drawn

    explicit CPrimitiveRenderable(int primitiveType = Triangles, int textureChannels = 2);

    void SetVertexArray(std::vector<CVec3<float>> vertices);
    void SetNormalArray(std::vector<CVec3<float>> normals);
    /// Channels from 0; one that is out of range is ignored.
    void SetTextureArray(int channel, std::vector<CVec2<float>> coordinates);
    /// The direction in which the first texture coordinate grows, in x, y, z; w is +1 or -1: the second one grows along
    /// w * (normal x tangent).
    void SetTangentArray(std::vector<CVec4<float>> tangents);
    void SetIndexArray(std::vector<unsigned> indices);
    /// All arrays at once; both channels get the mesh's texture coordinates.
    void SetMesh(const CTriangleMesh& mesh);

    int GetPrimitiveType() const { return m_type; }
    int GetTextureChannels() const { return int(m_textureArrays.size()); }
    const std::vector<CVec3<float>>& GetVertexArray() const { return m_vertices; }
    const std::vector<CVec3<float>>& GetNormalArray() const { return m_normals; }
    const std::vector<CVec2<float>>& GetTextureArray(int channel) const
    {
        return m_textureArrays.at(std::size_t(channel));
    }
    const std::vector<CVec4<float>>& GetTangentArray() const { return m_tangents; }
    const std::vector<unsigned>& GetIndexArray() const { return m_indices; }

    /// Whether the arrays fit together: same lengths (tangents may be absent), three indices a triangle, each in range.
    bool IsDrawable() const;
    /// Says which content the arrays have: a number that no other content of this process has. Each change gives
    /// another one, and a copy has the original's. The next frame draws what changed.
    std::uint64_t GetRevision() const { return m_revision; }
    /// Lowest and highest corner of all vertices; false without any.
    bool GetBounds(CVec3<float>& lowest, CVec3<float>& highest) const;

private:
    void change();

    int m_type;
    std::uint64_t m_revision = 0;  // 0: empty
    std::vector<CVec3<float>> m_vertices;
    std::vector<CVec3<float>> m_normals;
    std::vector<std::vector<CVec2<float>>> m_textureArrays;
    std::vector<CVec4<float>> m_tangents;
    std::vector<unsigned> m_indices;
};

using CPrimitiveRenderablePtr = std::shared_ptr<CPrimitiveRenderable>;

}  // namespace kiv
