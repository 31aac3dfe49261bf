#include "Noise.h"

#include <algorithm>
#include <cmath>

namespace Noise {

namespace {

int wrapped(int value, int period)
{
    if (value >= 0 && value < period)  // nearly always, and a division costs as much as the rest of the noise
        return value;
    const int rest = value % period;
    return rest < 0 ? rest + period : rest;
}

float fade(float t)
{
    return t * t * t * (t * (t * 6 - 15) + 10);
}

float gradient(int ix, int iy, float dx, float dy, std::uint32_t seed)
{
    // Sixteen directions, none along an axis: with those of the grid itself the noise shows the grid.
    static const float directions[4][2] = {{.981f, .195f}, {.831f, .556f}, {.556f, .831f}, {.195f, .981f}};
    const std::uint32_t h = hash(ix, iy, seed);
    const float* direction = directions[h & 3];
    return (h & 4 ? -direction[0] : direction[0]) * dx + (h & 8 ? -direction[1] : direction[1]) * dy;
}

/// Much faster than the library's where the processor has no instruction for it.
int floorOf(float x)
{
    const int whole = int(x);
    return whole - (x < float(whole) ? 1 : 0);
}

/// Moves an octave, so that the still points of all of them do not coincide.
float shifted(float x, int octave, int axis, std::uint32_t seed)
{
    return octave == 0 ? x : x + random(octave, axis, seed);
}

float mixed(float a, float b, float t)
{
    return a + (b - a) * t;
}

struct Candidate {
    float dx, dy, square;
    std::uint32_t id;
};

/// The border with each neighbour is the line halfway to its point.
float distanceToBorder(const Candidate (&found)[25], int nearest)
{
    const Candidate& own = found[nearest];
    float edge = 10;
    for (const Candidate& other : found) {
        const float ax = own.dx - other.dx, ay = own.dy - other.dy;
        const float square = ax * ax + ay * ay;
        if (square > 1e-6f)
            edge = std::min(edge, (other.square - own.square) / (2 * std::sqrt(square)));
    }
    return edge;
}

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
    const int floorX = floorOf(x), floorY = floorOf(y);
    const int x0 = wrapped(floorX, fx), x1 = wrapped(floorX + 1, fx);
    const int y0 = wrapped(floorY, fy), y1 = wrapped(floorY + 1, fy);
    const float tx = x - float(floorX), ty = y - float(floorY);
    const float top = mixed(gradient(x0, y0, tx, ty, seed), gradient(x1, y0, tx - 1, ty, seed), fade(tx));
    const float bottom = mixed(gradient(x0, y1, tx, ty - 1, seed), gradient(x1, y1, tx - 1, ty - 1, seed), fade(tx));
    return mixed(top, bottom, fade(ty)) * 1.5f;
}

float fbm(float u, float v, int fx, int fy, int octaves, std::uint32_t seed)
{
    float sum = 0, height = 0.5f;
    for (int octave = 0; octave < octaves; ++octave) {
        sum += height * perlin(shifted(u, octave, 1, seed), shifted(v, octave, 2, seed), fx << octave, fy << octave,
                               seed + std::uint32_t(octave) * 101u);
        height *= 0.5f;
    }
    return sum * 1.3f;
}

float ridged(float u, float v, int fx, int fy, int octaves, std::uint32_t seed)
{
    float sum = 0, height = 0.5f, total = 0;
    for (int octave = 0; octave < octaves; ++octave) {
        const float n = perlin(shifted(u, octave, 1, seed), shifted(v, octave, 2, seed), fx << octave, fy << octave,
                               seed + std::uint32_t(octave) * 101u);
        sum += height * (1 - std::min(1.0f, std::abs(n) * 1.6f));
        total += height;
        height *= 0.5f;
    }
    return sum / total;
}

Cell cells(float u, float v, int nx, int ny, float jitter, std::uint32_t seed)
{
    const float x = u * float(nx), y = v * float(ny);
    const int cx = floorOf(x), cy = floorOf(y);
    Candidate found[25];
    int nearest = 0, count = 0;
    for (int j = -2; j <= 2; ++j) {
        for (int i = -2; i <= 2; ++i) {
            const int wx = wrapped(cx + i, nx), wy = wrapped(cy + j, ny);
            const std::uint32_t id = hash(wx, wy, seed);
            const float dx = x - (float(cx + i) + 0.5f + (float(id & 0xffff) / 65536 - 0.5f) * jitter);
            const float dy = y - (float(cy + j) + 0.5f + (float(id >> 16) / 65536 - 0.5f) * jitter);
            found[count] = {dx, dy, dx * dx + dy * dy, id};
            if (found[count].square < found[nearest].square)
                nearest = count;
            ++count;
        }
    }
    const Candidate& own = found[nearest];
    return {std::sqrt(own.square), distanceToBorder(found, nearest), own.dx, own.dy, hash(int(own.id), 0, seed + 2)};
}

}  // namespace Noise
