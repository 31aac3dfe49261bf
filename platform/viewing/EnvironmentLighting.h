#pragma once

#include "CubeFaces.h"

#include <kiv/Vector.h>

#include <cstdint>
#include <vector>

namespace kiv {

/// What a sky gives to shading, ready for OpenGL. Linear light: the sRGB of the faces decoded, 1 is the white of a
/// face.
struct CEnvironmentLighting {
    /// Level l has 6 faces of (size >> l) squared texels, in the order of CCubeFaces, four half floats (RGBA, A is 1)
    /// each. Level 0 mirrors; level l is filtered with the GGX lobe of roughness l / (levels - 1), viewed along the
    /// normal.
    int size = 0;
    std::vector<std::vector<std::uint16_t>> levels;
    /// Irradiance over pi as nine spherical harmonics in the space of the cube map (directions as they are looked up):
    /// L = sum of coefficient[i] * basis[i], basis in the order 1, y, z, x, xy, yz, 3zz-1, xz, xx-yy with the usual
    /// constants (0.282095, 0.488603, 0.488603, 0.488603, 1.092548, 1.092548, 0.315392, 1.092548, 0.546274), the cosine
    /// lobe's factors (1, 2/3, 1/4) already in. A uniform sky of radiance 1 gives 1 in every direction.
    std::array<CVec3<float>, 9> irradiance;

    bool IsEmpty() const { return levels.empty(); }
};

/// Filters the faces; some hundred milliseconds, with as many threads as there are cores. Any thread.
CEnvironmentLighting PrepareLighting(const CCubeFaces& faces);

/// The same, taken from a file in the user's cache folder when these faces were prepared before. The file is named by
/// the digest of the faces and of how they are filtered; a damaged one is made again.
CEnvironmentLighting CachedLighting(const CCubeFaces& faces);

}  // namespace kiv
