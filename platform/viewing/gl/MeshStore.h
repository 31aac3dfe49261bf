#pragma once

#include <kiv/PrimitiveRenderable.h>

#include <QOpenGLBuffer>

#include <map>
#include <memory>

namespace kiv {

class CRenderDevice;

/// Places of the attributes, the same in all programs.
enum EnAttribute {
    VertexAttribute = 0,
    NormalAttribute = 1,
    TexCoord0Attribute = 2,
    TexCoord1Attribute = 3,
    TangentAttribute = 4
};

/// Geometry in the memory of the graphics card, one copy for each renderable.
class CMeshStore {
public:
    /// What is found out once for each content of a renderable.
    struct Facts {
        bool isDrawable = false;
        bool isClosed = false;  ///< see IsClosedSurface
        CVec3<float> low;
        CVec3<float> high;
    };

    explicit CMeshStore(CRenderDevice& device) : m_device(device) {}

    /// Valid until the renderable changes or is pruned.
    const Facts& FactsOf(const CPrimitiveRenderablePtr& renderable) { return meshOf(renderable).facts; }
    /// Draws the renderable with the program in use. Nothing for one that is not drawable.
    void Draw(const CPrimitiveRenderablePtr& renderable);
    /// Forgets what nobody holds any more.
    void Prune();
    /// Lets go of everything; what is still drawn is made again.
    void Release() { m_meshes.clear(); }

private:
    struct Mesh {
        std::weak_ptr<CPrimitiveRenderable> source;
        QOpenGLBuffer vertices{QOpenGLBuffer::VertexBuffer};
        QOpenGLBuffer indices{QOpenGLBuffer::IndexBuffer};
        int indexCount = 0;
        std::uint64_t revision = 0;
        Facts facts;
    };

    Mesh& meshOf(const CPrimitiveRenderablePtr& renderable);

    CRenderDevice& m_device;
    std::map<const CPrimitiveRenderable*, Mesh> m_meshes;
};

}  // namespace kiv
