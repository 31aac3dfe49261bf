#pragma once

#include <kiv/PrimitiveRenderable.h>

namespace kiv {

class CTangentHelper {
public:
    /// Fills the tangent array from vertices, normals and the first texture channel: the mean over the triangles that
    /// share a vertex, made perpendicular to the normal. Where texture coordinates do not tell (all the same, or a
    /// triangle without area), any direction perpendicular to the normal is taken. False, changing nothing, when the
    /// arrays do not fit together.
    static bool GenTangents(CPrimitiveRenderable& renderable);
};

}  // namespace kiv
