#pragma once

#include <kiv/TriangleMesh.h>

namespace kiv {

class CSphere3D {
public:
    /// A sphere of the radius (metres) in steps of so many degrees, at most (it is divided evenly, with at least 3
    /// around and 2 from pole to pole). The first texture coordinate runs 0..2 round the equator, to the right for who
    /// looks at it, the second 0..1 from the lower to the upper pole: a texture of one metre then shows twice around.
    /// Steps below 0.25 count as 0.25. Empty arrays for numbers that are not finite or not above 0.
    static void GetSphereData(const CVec3<double>& centre, double radius, double stepDegrees,
                              std::vector<CVec3<float>>& vertices, std::vector<unsigned>& indices,
                              std::vector<CVec3<float>>& normals, std::vector<CVec2<float>>& textureCoordinates);
};

}  // namespace kiv
