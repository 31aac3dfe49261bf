#include "TextureMips.h"

#include "Srgb.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace kiv {

namespace {

constexpr int LinearSteps = 4096;

struct Tables {
    std::array<std::uint16_t, 256> linear;
    std::array<unsigned char, LinearSteps> srgb;

    Tables()
    {
        for (int i = 0; i < 256; ++i) {
            const double light = DecodeSrgb(i / 255.0);
            linear[std::size_t(i)] = std::uint16_t(std::lround(light * 65535 / 4));  // four of them fit into 16 bits
        }
        for (int i = 0; i < LinearSteps; ++i) {
            const double light = (i + 0.5) / LinearSteps;
            srgb[std::size_t(i)] = static_cast<unsigned char>(std::lround(EncodeSrgb(light) * 255));
        }
    }
};

unsigned char meanColor(const Tables& tables, unsigned a, unsigned b, unsigned c, unsigned d)
{
    // Dark colours fall between the steps of the table; equal ones must come back as they were.
    if (a == b && b == c && c == d)
        return static_cast<unsigned char>(a);
    const unsigned sum = tables.linear[a] + tables.linear[b] + tables.linear[c] + tables.linear[d];
    return tables.srgb[std::min(sum / (65536u / LinearSteps), unsigned(LinearSteps - 1))];
}

void halveRow(const unsigned char* upper, const unsigned char* lower, int width, int step, bool isColor,
              unsigned char* out)
{
    static const Tables tables;
    for (int x = 0; x < width; ++x, upper += 8, lower += 8, out += 4) {
        for (int channel = 0; channel < 4; ++channel) {
            const unsigned a = upper[channel];
            const unsigned b = upper[channel + step];
            const unsigned c = lower[channel];
            const unsigned d = lower[channel + step];
            out[channel] = isColor && channel < 3 ? meanColor(tables, a, b, c, d)
                                                  : static_cast<unsigned char>((a + b + c + d + 2) / 4);
        }
    }
}

CMipLevel halve(const CMipLevel& level, bool isColor)
{
    CMipLevel half;
    half.width = std::max(1, level.width / 2);
    half.height = std::max(1, level.height / 2);
    half.texels.resize(std::size_t(half.width) * half.height * 4);
    const std::size_t row = std::size_t(level.width) * 4;
    const int step = level.width > 1 ? 4 : 0;
    for (int y = 0; y < half.height; ++y) {
        const unsigned char* upper = level.texels.data() + row * std::size_t(level.height > 1 ? 2 * y : 0);
        const unsigned char* lower = level.height > 1 ? upper + row : upper;
        halveRow(upper, lower, half.width, step, isColor, half.texels.data() + std::size_t(y) * half.width * 4);
    }
    return half;
}

CMipLevel upsideDown(int width, int height, const unsigned char* rgba)
{
    CMipLevel level;
    level.width = width;
    level.height = height;
    const std::size_t row = std::size_t(width) * 4;
    level.texels.resize(row * std::size_t(height));
    for (int y = 0; y < height; ++y)
        std::memcpy(level.texels.data() + row * std::size_t(height - 1 - y), rgba + row * std::size_t(y), row);
    return level;
}

}  // namespace

std::vector<CMipLevel> MakeMips(int width, int height, const unsigned char* rgba, bool isColor, int maxSide)
{
    std::vector<CMipLevel> levels;
    CMipLevel level = upsideDown(width, height, rgba);
    while (std::max(level.width, level.height) > std::max(1, maxSide))
        level = halve(level, isColor);
    levels.push_back(std::move(level));
    while (levels.back().width > 1 || levels.back().height > 1)
        levels.push_back(halve(levels.back(), isColor));
    return levels;
}

}  // namespace kiv
