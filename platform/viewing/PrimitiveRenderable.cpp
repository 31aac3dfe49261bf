#include <kiv/PrimitiveRenderable.h>

#include <kiv/VectorMath.h>

#include <algorithm>
#include <atomic>

namespace kiv {

namespace {

constexpr int MostTextureChannels = 8;

}  // namespace

CPrimitiveRenderable::CPrimitiveRenderable(int primitiveType, int textureChannels)
    : m_type(primitiveType), m_textureArrays(std::size_t(std::clamp(textureChannels, 0, MostTextureChannels)))
{
}

void CPrimitiveRenderable::change()
{
    static std::atomic<std::uint64_t> last{0};
    m_revision = ++last;
}

void CPrimitiveRenderable::SetVertexArray(std::vector<CVec3<float>> vertices)
{
    m_vertices = std::move(vertices);
    change();
}

void CPrimitiveRenderable::SetNormalArray(std::vector<CVec3<float>> normals)
{
    m_normals = std::move(normals);
    change();
}

void CPrimitiveRenderable::SetTextureArray(int channel, std::vector<CVec2<float>> coordinates)
{
    if (channel < 0 || channel >= GetTextureChannels())
        return;
    m_textureArrays[std::size_t(channel)] = std::move(coordinates);
    change();
}

void CPrimitiveRenderable::SetTangentArray(std::vector<CVec4<float>> tangents)
{
    m_tangents = std::move(tangents);
    change();
}

void CPrimitiveRenderable::SetIndexArray(std::vector<unsigned> indices)
{
    m_indices = std::move(indices);
    change();
}

void CPrimitiveRenderable::SetMesh(const CTriangleMesh& mesh)
{
    m_vertices = mesh.vertices;
    m_normals = mesh.normals;
    std::fill(m_textureArrays.begin(), m_textureArrays.end(), mesh.textureCoordinates);
    m_tangents.clear();
    m_indices = mesh.indices;
    change();
}

bool CPrimitiveRenderable::IsDrawable() const
{
    const std::size_t count = m_vertices.size();
    const auto fits = [count](const auto& array) { return array.size() == count; };
    const auto isInRange = [count](unsigned index) { return index < count; };
    return m_type == Triangles && !m_indices.empty() && m_indices.size() % 3 == 0 && fits(m_normals) &&
           (m_tangents.empty() || fits(m_tangents)) &&
           std::all_of(m_textureArrays.begin(), m_textureArrays.end(), fits) &&
           std::all_of(m_indices.begin(), m_indices.end(), isInRange);
}

bool CPrimitiveRenderable::GetBounds(CVec3<float>& lowest, CVec3<float>& highest) const
{
    bool isFound = false;
    for (const CVec3<float>& vertex : m_vertices) {
        if (!FitsFloat(VectorCast<double>(vertex)))
            continue;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            lowest[axis] = isFound ? std::min(lowest[axis], vertex[axis]) : vertex[axis];
            highest[axis] = isFound ? std::max(highest[axis], vertex[axis]) : vertex[axis];
        }
        isFound = true;
    }
    return isFound;
}

}  // namespace kiv
