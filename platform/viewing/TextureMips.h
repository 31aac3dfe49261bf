#pragma once

#include <vector>

namespace kiv {

/// One level of a texture: rows from the bottom, as OpenGL takes them, four bytes a texel.
struct CMipLevel {
    int width = 0;
    int height = 0;
    std::vector<unsigned char> texels;
};

/// All levels down to 1 x 1 of a picture whose rows run from the top, halved first until no side is longer than
/// `maxSide`. Colours are averaged in linear light. Some tens of milliseconds for a large picture. Any thread.
std::vector<CMipLevel> MakeMips(int width, int height, const unsigned char* rgba, bool isColor, int maxSide);

}  // namespace kiv
