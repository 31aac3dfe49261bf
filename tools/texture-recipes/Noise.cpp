#include "Noise.h"

#include <algorithm>
#include <cmath>

namespace Noise {

namespace {

int wrapped(int value, int period)
{
    const int rest = value % period;
    return rest < 0 ? rest + period : rest;
}

float fade(float t)
{
    return t * t * t * (t * (t * 6 - 15) + 10);
}

float gradient(int ix, int iy, float dx, float dy, std::uint32_t seed)
{
    static const float directions[8][2] = {
        {1, 0}, {-1, 0}, {0, 1}, {0, -1}, {.7071f, .7071f}, {-.7071f, .7071f}, {.7071f, -.7071f}, {-.7071f, -.7071f}};
    const float* direction = directions[hash(ix, iy, seed) & 7];
    return direction[0] * dx + direction[1] * dy;
}

float mixed(float a, float b, float t)
{
    return a + (b - a) * t;
}

struct Candidate {
    float dx, dy, distance;
    std::uint32_t id;
};

}  // namespace

std::uint32_t hash(int x, int y, std::uint32_t seed)
{
    std::uint32_t h = seed * 0x9E3779B9u + std::uint32_t(x) * 0x85EBCA6Bu + std::uint32_t(y) * 0xC2B2AE35u;
    h ^= h >> 16;
    h *= 0x7FEB352Du;
    h ^= h >> 15;
    h *= 0x846CA68Bu;
    return h ^ (h >> 16);
}

float random(int x, int y, std::uint32_t seed)
{
    return float(hash(x, y, seed) >> 8) / 16777216.0f;
}

float perlin(float u, float v, int fx, int fy, std::uint32_t seed)
{
    const float x = u * float(fx);
    const float y = v * float(fy);
    const float floorX = std::floor(x);
    const float floorY = std::floor(y);
    const int x0 = wrapped(int(floorX), fx), x1 = wrapped(int(floorX) + 1, fx);
    const int y0 = wrapped(int(floorY), fy), y1 = wrapped(int(floorY) + 1, fy);
    const float tx = x - floorX, ty = y - floorY;
    const float top = mixed(gradient(x0, y0, tx, ty, seed), gradient(x1, y0, tx - 1, ty, seed), fade(tx));
    const float bottom = mixed(gradient(x0, y1, tx, ty - 1, seed), gradient(x1, y1, tx - 1, ty - 1, seed), fade(tx));
    return mixed(top, bottom, fade(ty)) * 1.5f;
}

float fbm(float u, float v, int fx, int fy, int octaves, std::uint32_t seed)
{
    float sum = 0, height = 0.5f;
    for (int octave = 0; octave < octaves; ++octave) {
        sum += height * perlin(u, v, fx << octave, fy << octave, seed + std::uint32_t(octave) * 101u);
        height *= 0.5f;
    }
    return sum * 1.3f;
}

float ridged(float u, float v, int fx, int fy, int octaves, std::uint32_t seed)
{
    float sum = 0, height = 0.5f, total = 0;
    for (int octave = 0; octave < octaves; ++octave) {
        const float n = perlin(u, v, fx << octave, fy << octave, seed + std::uint32_t(octave) * 101u);
        sum += height * (1 - std::min(1.0f, std::abs(n) * 1.6f));
        total += height;
        height *= 0.5f;
    }
    return sum / total;
}

Cell cells(float u, float v, int nx, int ny, float jitter, std::uint32_t seed)
{
    const float x = u * float(nx), y = v * float(ny);
    const int cx = int(std::floor(x)), cy = int(std::floor(y));
    Candidate found[25];
    int nearest = 0, count = 0;
    for (int j = -2; j <= 2; ++j) {
        for (int i = -2; i <= 2; ++i) {
            const int wx = wrapped(cx + i, nx), wy = wrapped(cy + j, ny);
            const float px = float(cx + i) + 0.5f + (random(wx, wy, seed) - 0.5f) * jitter;
            const float py = float(cy + j) + 0.5f + (random(wx, wy, seed + 1) - 0.5f) * jitter;
            const float dx = x - px, dy = y - py;
            found[count] = {dx, dy, std::sqrt(dx * dx + dy * dy), hash(wx, wy, seed + 2)};
            if (found[count].distance < found[nearest].distance)
                nearest = count;
            ++count;
        }
    }
    const Candidate& own = found[nearest];
    float edge = 10;
    for (int i = 0; i < count; ++i) {
        const float ax = own.dx - found[i].dx, ay = own.dy - found[i].dy;  // from the own point to the other
        const float length = std::sqrt(ax * ax + ay * ay);
        if (i != nearest && length > 1e-4f)
            edge = std::min(edge, std::abs((own.dx * ax + own.dy * ay) / length - length / 2));
    }
    return {own.distance, edge, own.dx, own.dy, own.id};
}

}  // namespace Noise
