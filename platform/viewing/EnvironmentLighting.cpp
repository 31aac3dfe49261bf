#include "EnvironmentLighting.h"

#include "CubeImage.h"
#include "HalfFloat.h"
#include "LightingFormat.h"
#include "ParallelFor.h"

#include <cmath>
#include <optional>

namespace kiv {

namespace {

constexpr float Pi = 3.14159265358979f;
constexpr int SampleCount = 64;

using Vector = CVec3<float>;

float dot(const Vector& a, const Vector& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

Vector cross(const Vector& a, const Vector& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

Vector normalized(const Vector& v)
{
    const float scale = 1 / std::sqrt(dot(v, v));
    return {v.x * scale, v.y * scale, v.z * scale};
}

// From `size` texels a side down to one.
using Pyramid = std::vector<CCubeImage>;

Pyramid makePyramid(const CCubeFaces& faces, int size)
{
    Pyramid pyramid{CCubeImage(faces, size)};
    while (pyramid.back().Size() > 1)
        pyramid.push_back(pyramid.back().Halved());
    return pyramid;
}

// One direction of light of a lobe about +z, and how it is read.
struct Sample {
    Vector light;
    float weight;  // of all samples 1 together
    int mip;       // of the pyramid
};

// The digits of i in base 2, mirrored at the point: 0..1.
float radicalInverse(std::uint32_t i)
{
    float result = 0;
    for (float digit = 0.5f; i != 0; i >>= 1, digit /= 2)
        result += (i & 1) ? digit : 0;
    return result;
}

// Half vectors distributed as GGX about the normal, which is also the view: the density of a light is D / 4. Each
// stands for the solid angle 1 / (count * density) and is read where a texel covers as much (Colbert and Krivanek,
// "GPU-Based Importance Sampling", 2007), weighted by the cosine (Karis, course
// notes on physically based shading, 2013).
std::optional<Sample> sampleOf(std::uint32_t i, float alpha, const Pyramid& pyramid)
{
    const float square = alpha * alpha;
    const float u = radicalInverse(i) + 0.5f / SampleCount, angle = 2 * Pi * static_cast<float>(i) / SampleCount;
    const float cosSquare = (1 - u) / (1 + (square - 1) * u);
    const float z = 2 * cosSquare - 1;
    if (z <= 0)
        return {};
    const float around = 2 * std::sqrt(cosSquare * (1 - cosSquare));
    const float base = cosSquare * (square - 1) + 1;
    const float density = square / (Pi * base * base) / 4;
    const auto size = static_cast<float>(pyramid.front().Size());
    const float texel = 4 * Pi / (6 * size * size);
    const auto mip = std::lround(0.5f * std::log2(1 / (SampleCount * density) / texel));
    return Sample{{around * std::cos(angle), around * std::sin(angle), z},
                  z,
                  std::clamp(static_cast<int>(mip), 0, static_cast<int>(pyramid.size()) - 1)};
}

std::vector<Sample> samplesOf(float roughness, const Pyramid& pyramid)
{
    std::vector<Sample> samples;
    float sum = 0;
    for (std::uint32_t i = 0; i < SampleCount; ++i) {
        if (const auto sample = sampleOf(i, roughness * roughness, pyramid)) {
            samples.push_back(*sample);
            sum += sample->weight;
        }
    }
    for (Sample& sample : samples)
        sample.weight /= sum;
    return samples;
}

CLight filtered(const Vector& normal, const std::vector<Sample>& samples, const Pyramid& pyramid)
{
    // No centre of a texel is on the axis of y, since faces have an even size.
    const Vector tangent = normalized(cross({0, 1, 0}, normal));
    const Vector bitangent = cross(normal, tangent);
    CLight sum{};
    for (const Sample& sample : samples) {
        const Vector& l = sample.light;
        const CCubePlace place = CubePlaceOf({tangent.x * l.x + bitangent.x * l.y + normal.x * l.z,
                                              tangent.y * l.x + bitangent.y * l.y + normal.y * l.z,
                                              tangent.z * l.x + bitangent.z * l.y + normal.z * l.z});
        sum += pyramid[static_cast<std::size_t>(sample.mip)].Read(place) * sample.weight;
    }
    return sum;
}

void store(const CLight& light, std::uint16_t* texel)
{
    texel[0] = HalfBits(light[0]);
    texel[1] = HalfBits(light[1]);
    texel[2] = HalfBits(light[2]);
    texel[3] = HalfBits(1);
}

// A row of one face of one level.
struct Row {
    int level, face, y;
};

std::vector<Row> rowsOf(int size, int levels)
{
    std::vector<Row> rows;
    for (int level = 0; level < levels; ++level)
        for (int face = 0; face < 6; ++face)
            for (int y = 0; y < size >> level; ++y)
                rows.push_back({level, face, y});
    return rows;
}

void fillLevels(const Pyramid& pyramid, CEnvironmentLighting& lighting)
{
    const int levels = LightingLevels(lighting.size);
    std::vector<std::vector<Sample>> samples;
    for (int level = 0; level < levels; ++level) {
        // Level 0 mirrors and needs none.
        samples.push_back(level == 0 ? std::vector<Sample>()
                                     : samplesOf(static_cast<float>(level) / static_cast<float>(levels - 1), pyramid));
        lighting.levels.emplace_back(LightingLevelLength(lighting.size, level));
    }
    const std::vector<Row> rows = rowsOf(lighting.size, levels);
    ParallelFor(static_cast<int>(rows.size()), [&](int job) {
        const auto [level, face, y] = rows[static_cast<std::size_t>(job)];
        const auto index = static_cast<std::size_t>(level);
        const CCubeImage& grid = pyramid[index];  // of the level's size
        std::uint16_t* texel =
            &lighting.levels[index][static_cast<std::size_t>((face * grid.Size() + y) * grid.Size()) * 4];
        for (int x = 0; x < grid.Size(); ++x, texel += 4) {
            const Vector normal = normalized(CubeDirection({face, grid.Centre(x), grid.Centre(y)}));
            store(level == 0 ? grid.At(face, x, y) : filtered(normal, samples[index], pyramid), texel);
        }
    });
}

std::array<float, 9> harmonicsOf(const Vector& d)
{
    return {0.282095f,
            0.488603f * d.y,
            0.488603f * d.z,
            0.488603f * d.x,
            1.092548f * d.x * d.y,
            1.092548f * d.y * d.z,
            0.315392f * (3 * d.z * d.z - 1),
            1.092548f * d.x * d.z,
            0.546274f * (d.x * d.x - d.y * d.y)};
}

// Ramamoorthi and Hanrahan, "An Efficient Representation for Irradiance Environment Maps", 2001.
std::array<Vector, 9> irradianceOf(const CCubeImage& image)
{
    constexpr float lobe[9] = {1, 2.f / 3, 2.f / 3, 2.f / 3, .25f, .25f, .25f, .25f, .25f};
    std::array<Vector, 9> sums;
    float sphere = 0;
    for (int face = 0; face < 6; ++face) {
        for (int y = 0; y < image.Size(); ++y) {
            for (int x = 0; x < image.Size(); ++x) {
                const Vector direction = CubeDirection({face, image.Centre(x), image.Centre(y)});
                const float square = dot(direction, direction);
                const float angle = 1 / (square * std::sqrt(square));
                const CLight light = image.At(face, x, y) * angle;
                const std::array<float, 9> harmonics = harmonicsOf(normalized(direction));
                for (std::size_t i = 0; i < 9; ++i) {
                    sums[i].x += light[0] * harmonics[i];
                    sums[i].y += light[1] * harmonics[i];
                    sums[i].z += light[2] * harmonics[i];
                }
                sphere += angle;
            }
        }
    }
    for (std::size_t i = 0; i < 9; ++i) {
        const float scale = lobe[i] * 4 * Pi / sphere;
        sums[i] = {sums[i].x * scale, sums[i].y * scale, sums[i].z * scale};
    }
    return sums;
}

const CCubeImage& imageForIrradiance(const Pyramid& pyramid)
{
    constexpr int enough = 64;
    std::size_t mip = 0;
    while (pyramid[mip].Size() > enough)
        ++mip;
    return pyramid[mip];
}

}  // namespace

CEnvironmentLighting PrepareLighting(const CCubeFaces& faces)
{
    try {
        CEnvironmentLighting lighting;
        lighting.size = LightingSize(faces);
        if (lighting.size == 0)
            return {};
        const Pyramid pyramid = makePyramid(faces, lighting.size);
        fillLevels(pyramid, lighting);
        lighting.irradiance = irradianceOf(imageForIrradiance(pyramid));
        return lighting;
    } catch (...) {
        // No memory: the scene stays without the sky's light.
        return {};
    }
}

}  // namespace kiv
