#include <kiv/BodyBuilder.h>

namespace kiv {

CBodyTriangles::CBodyTriangles(const CBody* body)
{
    if (body)
        body->Triangulate(m_mesh);
}

}  // namespace kiv
