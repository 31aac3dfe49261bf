#pragma once

#include "CubeFaces.h"

#include <algorithm>
#include <cstdint>

namespace kiv {

/// Raise it whenever PrepareLighting answers something else for the same faces.
constexpr std::uint32_t LightingVersion = 1;

/// The size of level 0 for these faces: a power of two, 8 to 256; 0 for faces that cannot be used.
inline int LightingSize(const CCubeFaces& faces)
{
    const int side = faces[0].width();
    for (const QImage& face : faces) {
        if (face.isNull() || face.format() != QImage::Format_RGBA8888 || face.size() != QSize(side, side))
            return 0;
    }
    int size = 8;
    while (size < 256 && 2 * size <= side)
        size *= 2;
    return size;
}

/// Down to a level of 4 * 4 texels: 7 for a size of 256.
inline int LightingLevels(int size)
{
    int levels = 1;
    while ((size >> levels) >= 4)
        ++levels;
    return levels;
}

/// How many half floats a level has.
inline std::size_t LightingLevelLength(int size, int level)
{
    const auto side = static_cast<std::size_t>(size >> level);
    return 6 * side * side * 4;
}

}  // namespace kiv
