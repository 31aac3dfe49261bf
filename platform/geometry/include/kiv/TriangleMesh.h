#pragma once

#include <kiv/Vector.h>

#include <vector>

namespace kiv {

/// Indexed triangles. Vertices, normals and texture coordinates run in parallel; three indices make a triangle,
/// counter- clockwise when seen from outside. Lengths in metres; right-handed, z up. Texture coordinates are metres on
/// the surface where a body says "real size".
struct CTriangleMesh {
    std::vector<CVec3<float>> vertices;
    std::vector<CVec3<float>> normals;  ///< of length 1
    std::vector<CVec2<float>> textureCoordinates;
    std::vector<unsigned> indices;
};

}  // namespace kiv
