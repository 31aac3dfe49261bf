#pragma once

#include <kiv/PrimitiveRenderable.h>

namespace kiv {

/// Whether the triangles enclose volumes and look outwards, so that from outside no back of one is ever seen. Corners
/// at the same place belong together, whatever their normals and texture coordinates are. False in doubt.
bool IsClosedSurface(const CPrimitiveRenderable& renderable);

}  // namespace kiv
