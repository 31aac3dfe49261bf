#pragma once

#include <kiv/Matrix3.h>
#include <kiv/Vector.h>

namespace kiv {

/// The matrix that takes a place on a surface, the column (u, v, 1) with u to the right and v up in the unit of texture
/// sizes, to the texture coordinate shown there; one repeat of the picture is 0..1.
///
/// `rotation` turns the picture clockwise, in degrees, about the surface's origin. `scale` is the width and height of
/// one repeat; a negative one mirrors that axis, and one below 0.01 in magnitude counts as 0.01. `offset` shifts the
/// turned picture along its own axes. Entries below 1e-6 in magnitude are 0. With f = 1 / scale the rows are
/// (fx cos r, -fx sin r, -fx offset.x), (fy sin r, fy cos r, -fy offset.y) and (0, 0, 1).
CMatrix3<float> TextureTransform(float rotation, const CVec2<float>& scale, const CVec2<float>& offset);

/// Where the place lies on the picture.
CVec2<float> PlaceOnTexture(const CMatrix3<float>& transform, const CVec2<float>& place);

}  // namespace kiv
