#pragma once

#include <cstdint>

/// Noise with period 1 in both directions: frequencies are whole numbers, so every texture made of it is seamless.
/// Deterministic on every machine: integer hashes only, no library's random numbers.
namespace Noise {

std::uint32_t hash(int x, int y, std::uint32_t seed);
/// 0..1
float random(int x, int y, std::uint32_t seed);

/// Gradient noise, about -1..1, `fx` x `fy` waves over the unit square.
float perlin(float u, float v, int fx, int fy, std::uint32_t seed);
/// `octaves` of it, each of twice the frequency and half the height; about -1..1.
float fbm(float u, float v, int fx, int fy, int octaves, std::uint32_t seed);
/// Sharp crests, 0..1.
float ridged(float u, float v, int fx, int fy, int octaves, std::uint32_t seed);

/// The cells around scattered points, `nx` x `ny` of them.
struct Cell {
    float nearest = 0;  ///< distance to the cell's point, in cell widths
    float edge = 0;     ///< distance to the border with the next cell, in cell widths
    float dx = 0;       ///< offset from the cell's point, in cell widths
    float dy = 0;
    std::uint32_t id = 0;
};
Cell cells(float u, float v, int nx, int ny, float jitter, std::uint32_t seed);

}  // namespace Noise
