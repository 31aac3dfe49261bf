#pragma once

#include "CubeFaces.h"
#include "Light.h"

#include <kiv/Vector.h>

#include <cmath>
#include <vector>

namespace kiv {

/// A place on a cube map: a face in the order of OpenGL, and where on it, -1..1 to the right and down its rows.
struct CCubePlace {
    int face;
    float s, t;
};

/// As OpenGL looks a direction up; it need not have a length of 1, only one above 0. Here, since filtering is for the
/// most part this.
inline CCubePlace CubePlaceOf(const CVec3<float>& direction)
{
    const auto [x, y, z] = direction;
    const float ax = std::abs(x), ay = std::abs(y), az = std::abs(z);
    if (ax >= ay && ax >= az) {
        const float scale = 1 / ax;
        return {x > 0 ? 0 : 1, (x > 0 ? -z : z) * scale, -y * scale};
    }
    if (ay >= az) {
        const float scale = 1 / ay;
        return {y > 0 ? 2 : 3, x * scale, (y > 0 ? z : -z) * scale};
    }
    const float scale = 1 / az;
    return {z > 0 ? 4 : 5, (z > 0 ? x : -x) * scale, -y * scale};
}
/// The other way; not normalised, its largest component is 1 or -1.
CVec3<float> CubeDirection(const CCubePlace& place);

/// A cube map in linear light. Each face has a border of one texel out of its neighbours, so that reading between
/// texels shows no seams even where a face is one texel large.
class CCubeImage {
public:
    /// Decodes the faces and reduces them to size * size texels by the areas that these cover.
    CCubeImage(const CCubeFaces& faces, int size);

    /// Half as large, each texel the mean of four. The size must be even.
    CCubeImage Halved() const;

    int Size() const { return m_size; }
    /// Column and row from -1 (border) to Size() (border).
    const CLight& At(int face, int x, int y) const { return m_lights[Index(face, x, y)]; }
    /// Between the four nearest texels.
    CLight Read(const CVec3<float>& direction) const { return Read(CubePlaceOf(direction)); }
    CLight Read(const CCubePlace& place) const
    {
        const float scale = 0.5f * static_cast<float>(m_size);
        // From the centre of the border's first texel.
        const float x = (place.s + 1) * scale + 0.5f, y = (place.t + 1) * scale + 0.5f;
        const int column = static_cast<int>(x), row = static_cast<int>(y);
        const float right = x - static_cast<float>(column), down = y - static_cast<float>(row);
        const CLight* upper = &At(place.face, column - 1, row - 1);
        const CLight* lower = upper + m_size + 2;
        const CLight above = upper[0] + (upper[1] - upper[0]) * right;
        const CLight below = lower[0] + (lower[1] - lower[0]) * right;
        return above + (below - above) * down;
    }

    /// Where the centre of a column or row lies, -1..1.
    float Centre(int i) const { return (2 * static_cast<float>(i) + 1) / static_cast<float>(m_size) - 1; }

private:
    explicit CCubeImage(int size);

    std::size_t Index(int face, int x, int y) const
    {
        const std::size_t stride = static_cast<std::size_t>(m_size) + 2;
        return (static_cast<std::size_t>(face) * stride + static_cast<std::size_t>(y + 1)) * stride +
               static_cast<std::size_t>(x + 1);
    }
    CLight& At(int face, int x, int y) { return m_lights[Index(face, x, y)]; }
    void FillBorders();

    int m_size;
    std::vector<CLight> m_lights;
};

}  // namespace kiv
