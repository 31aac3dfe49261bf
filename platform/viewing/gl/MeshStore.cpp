#include "MeshStore.h"

#include "../ClosedSurface.h"
#include "RenderDevice.h"

namespace kiv {

namespace {

struct Corner {
    CVec3<float> position;
    CVec3<float> normal;
    CVec2<float> textureCoordinates[2];
    CVec4<float> tangent;
};

struct Layout {
    EnAttribute attribute;
    int components;
    std::size_t offset;
};

constexpr Layout Layouts[] = {{VertexAttribute, 3, offsetof(Corner, position)},
                              {NormalAttribute, 3, offsetof(Corner, normal)},
                              {TexCoord0Attribute, 2, offsetof(Corner, textureCoordinates)},
                              {TexCoord1Attribute, 2, offsetof(Corner, textureCoordinates) + sizeof(CVec2<float>)},
                              {TangentAttribute, 4, offsetof(Corner, tangent)}};

std::vector<Corner> cornersOf(const CPrimitiveRenderable& renderable)
{
    std::vector<Corner> corners(renderable.GetVertexArray().size());
    const int channels = std::min(renderable.GetTextureChannels(), 2);
    for (std::size_t i = 0; i < corners.size(); ++i) {
        Corner& corner = corners[i];
        corner.position = renderable.GetVertexArray()[i];
        corner.normal = renderable.GetNormalArray()[i];
        for (int channel = 0; channel < channels; ++channel) {
            const auto& coordinates = renderable.GetTextureArray(channel);
            if (i < coordinates.size())
                corner.textureCoordinates[channel] = coordinates[i];
        }
        corner.tangent =
            i < renderable.GetTangentArray().size() ? renderable.GetTangentArray()[i] : CVec4<float>(1, 0, 0, 1);
    }
    return corners;
}

CMeshStore::Facts factsOf(const CPrimitiveRenderable& renderable)
{
    CMeshStore::Facts facts;
    facts.isDrawable = renderable.IsDrawable();
    facts.isClosed = IsClosedSurface(renderable);
    renderable.GetBounds(facts.low, facts.high);
    return facts;
}

void fill(QOpenGLBuffer& buffer, const void* data, std::size_t bytes)
{
    if (!buffer.isCreated())
        buffer.create();
    buffer.bind();
    buffer.allocate(data, int(bytes));
}

}  // namespace

CMeshStore::Mesh& CMeshStore::meshOf(const CPrimitiveRenderablePtr& renderable)
{
    Mesh& mesh = m_meshes[renderable.get()];
    if (mesh.source.lock() == renderable && mesh.revision == renderable->GetRevision())
        return mesh;
    mesh.source = renderable;
    mesh.revision = renderable->GetRevision();
    mesh.facts = factsOf(*renderable);
    if (!mesh.facts.isDrawable)
        return mesh;
    const std::vector<Corner> corners = cornersOf(*renderable);
    mesh.indexCount = int(renderable->GetIndexArray().size());
    fill(mesh.vertices, corners.data(), corners.size() * sizeof(Corner));
    fill(mesh.indices, renderable->GetIndexArray().data(), std::size_t(mesh.indexCount) * sizeof(unsigned));
    return mesh;
}

void CMeshStore::Draw(const CPrimitiveRenderablePtr& renderable)
{
    Mesh& mesh = meshOf(renderable);
    if (!mesh.facts.isDrawable)
        return;
    QOpenGLExtraFunctions& gl = m_device.GetFunctions();
    mesh.vertices.bind();
    mesh.indices.bind();
    for (const Layout& layout : Layouts) {
        gl.glEnableVertexAttribArray(layout.attribute);
        gl.glVertexAttribPointer(layout.attribute, layout.components, GL_FLOAT, GL_FALSE, sizeof(Corner),
                                 reinterpret_cast<const void*>(layout.offset));
    }
    gl.glDrawElements(GL_TRIANGLES, mesh.indexCount, GL_UNSIGNED_INT, nullptr);
    mesh.indices.release();
    mesh.vertices.release();
}

void CMeshStore::Prune()
{
    for (auto it = m_meshes.begin(); it != m_meshes.end();)
        it = it->second.source.expired() ? m_meshes.erase(it) : std::next(it);
}

}  // namespace kiv
