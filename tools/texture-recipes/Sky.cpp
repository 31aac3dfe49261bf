#include "Sky.h"

#include "Noise.h"
#include "Picture.h"

#include <QDir>
#include <QImage>

#include <algorithm>

namespace {

constexpr float Pi = 3.14159265f;

SkyLight operator+(const SkyLight& a, const SkyLight& b)
{
    return {a.r + b.r, a.g + b.g, a.b + b.b};
}

SkyLight operator*(const SkyLight& a, float f)
{
    return {a.r * f, a.g * f, a.b * f};
}

SkyLight mix(const SkyLight& a, const SkyLight& b, float t)
{
    return a * (1 - t) + b * t;
}

float dot(const Direction& a, const Direction& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

Direction normalized(const Direction& d)
{
    const float length = std::sqrt(dot(d, d));
    return {d.x / length, d.y / length, d.z / length};
}

// To the left, behind the viewer's shoulder.
const Direction sun = normalized({-0.5f, -0.6f, 0.62f});
const SkyLight sunColor{1.0f, 0.93f, 0.78f};
const SkyLight haze{0.80f, 0.86f, 0.90f};

SkyLight clearSky(const Direction& d)
{
    const SkyLight zenith{0.115f, 0.27f, 0.60f}, middle{0.30f, 0.52f, 0.82f};
    const float up = std::max(d.z, 0.0f);
    const SkyLight blue = mix(middle, zenith, smooth(0.15f, 1.0f, up));
    return mix(blue, haze, std::exp(-up * 5.5f));
}

// The wide glow of the air, the bright surroundings, and the disc, whose edge is a few texels soft.
SkyLight withSun(const SkyLight& sky, const Direction& d)
{
    const float cosine = dot(d, sun);
    const float away = std::acos(std::clamp(cosine, -1.0f, 1.0f));
    const float glow = 0.32f * std::exp(-away * 2.4f) + 0.55f * std::exp(-away * 9.0f);
    const SkyLight glowing = sky + sunColor * glow;
    return mix(glowing, {1.0f, 0.985f, 0.94f}, 1 - smooth(0.035f, 0.10f, away));
}

// Thin clouds on a plane above the scene: long streaks broken up by finer billows. 0..1.
float cloudCover(const Direction& d)
{
    const float height = std::max(d.z, 0.0f) + 0.12f;
    const float u = 0.5f + 0.050f * d.x / height, v = 0.5f + 0.050f * d.y / height;
    const float bend = 0.030f * Noise::fbm(u, v, 9, 9, 3, 71), sway = 0.030f * Noise::fbm(u, v, 9, 9, 3, 72);
    const float billows = Noise::fbm(u + bend, v + sway, 14, 22, 6, 73);
    const float fields = Noise::fbm(u, v, 5, 6, 2, 74);
    const float cover = smooth(-0.04f, 0.80f, billows + 0.9f * fields);
    return cover * smooth(0.02f, 0.30f, d.z);
}

SkyLight withClouds(const SkyLight& sky, const Direction& d)
{
    const float cover = cloudCover(d);
    const float near = std::pow(std::max(dot(d, sun), 0.0f), 4.0f);
    const SkyLight bright = mix(SkyLight{0.88f, 0.905f, 0.935f}, SkyLight{1.0f, 0.97f, 0.91f}, near);
    // Where a cloud is thick its underside is a little grey.
    const SkyLight cloud = mix(bright, bright * 0.90f, smooth(0.55f, 1.0f, cover));
    return mix(sky, cloud, 0.82f * cover);
}

// Short grass and gravel, seen from a height of 1.6 metres; the pattern fades where a texel would cover several of its
// waves.
SkyLight ground(const Direction& d)
{
    const float depth = std::max(-d.z, 0.004f);
    const float scale = 1.6f / depth / 64;  // one repeat of the noise is 64 metres
    const float u = d.x * scale, v = d.y * scale;
    const float patches = Noise::fbm(u, v, 10, 10, 4, 81) * smooth(0.01f, 0.12f, depth);
    const float grains = Noise::fbm(u, v, 160, 160, 4, 82) * smooth(0.12f, 0.6f, depth);
    const SkyLight meadow{0.200f, 0.212f, 0.132f}, gravel{0.255f, 0.235f, 0.200f};
    const SkyLight base = mix(meadow, gravel, smooth(-0.35f, 0.40f, patches));
    // Turned, so that the two grids of the noise do not show together.
    const float blades =
        Noise::fbm(12.8f * u - 9.6f * v, 9.6f * u + 12.8f * v, 90, 90, 4, 83) * smooth(0.25f, 0.75f, depth);
    const float shade = 1 + 0.16f * patches + 0.26f * grains + 0.36f * blades;
    const float feet = 1 - 0.38f * smooth(0.25f, 1.0f, depth);
    return mix(base * (shade * feet), haze * 0.72f, std::exp(-depth * 26) * 0.75f);
}

// How high (in radians) something stands at the horizon, all around it; the noise has the period of the circle.
float ridge(float around, float base, float swing, int waves, int octaves, std::uint32_t seed)
{
    return base + swing * Noise::fbm(around, 0.37f, waves, 1, octaves, seed);
}

// 1 below the outline, 0 above it; the edge is about as soft as a texel of a face is wide.
float below(float elevation, float outline)
{
    return 1 - smooth(outline - 0.0022f, outline + 0.0022f, elevation);
}

// Two ranges of hills in the haze and a line of trees before them.
SkyLight withHorizon(const SkyLight& light, const Direction& d)
{
    const float elevation = std::asin(std::clamp(d.z, -1.0f, 1.0f));
    if (elevation > 0.2f || elevation < -0.05f)
        return light;
    const float around = std::atan2(d.y, d.x) / (2 * Pi) + 0.5f;
    // Towards the sun the haze is brighter.
    const float lit = 0.92f + 0.12f * std::max(0.0f, d.x * sun.x + d.y * sun.y);
    const SkyLight far = SkyLight{0.46f, 0.56f, 0.66f} * lit, near = SkyLight{0.27f, 0.345f, 0.36f} * lit;
    const SkyLight trees = SkyLight{0.105f, 0.135f, 0.088f} * lit;
    SkyLight result = mix(light, far, below(elevation, ridge(around, 0.090f, 0.060f, 7, 6, 91)));
    result = mix(result, near, below(elevation, ridge(around, 0.048f, 0.038f, 11, 6, 92)));
    const float crowns = 0.015f * Noise::ridged(around, 0.61f, 150, 1, 3, 94);
    const float line = ridge(around, 0.020f, 0.026f, 13, 4, 93) + crowns;
    // Lower down the trees stand in the mist of the meadow.
    const SkyLight misty = mix(trees, near, 0.45f * (1 - smooth(0.0f, 0.03f, elevation)));
    result = mix(result, misty, below(elevation, line));
    return mix(light, result, smooth(-0.012f, -0.002f, elevation));
}

uchar toByte(float linear)
{
    const float light = clamp01(linear);
    const float value = light <= 0.0031308f ? light * 12.92f : 1.055f * std::pow(light, 1 / 2.4f) - 0.055f;
    return uchar(std::lround(value * 255));
}

// Four looks a texel around its centre.
SkyLight texelLight(int face, float u, float v, float width)
{
    SkyLight sum;
    for (const float x : {-0.25f, 0.25f})
        for (const float y : {-0.25f, 0.25f})
            sum = sum + skyLight(skyDirection(face, u + x * width, v + y * width));
    return sum * 0.25f;
}

QImage drawFace(int face, int pixels)
{
    QImage image(pixels, pixels, QImage::Format_RGB888);
    const float width = 1 / float(pixels);
    for (int y = 0; y < pixels; ++y) {
        uchar* line = image.scanLine(y);
        for (int x = 0; x < pixels; ++x) {
            const SkyLight light = texelLight(face, (float(x) + 0.5f) * width, (float(y) + 0.5f) * width, width);
            *line++ = toByte(light.r);
            *line++ = toByte(light.g);
            *line++ = toByte(light.b);
        }
    }
    return image;
}

}  // namespace

SkyLight skyLight(const Direction& direction)
{
    const Direction d = normalized(direction);
    constexpr float soft = 0.003f;
    const float share = smooth(-soft, soft, d.z);
    const SkyLight sky = share > 0 ? withClouds(withSun(clearSky(d), d), d) : SkyLight();
    const SkyLight earth = share < 1 ? ground(d) : SkyLight();
    return withHorizon(mix(earth, sky, share), d);
}

Direction skyDirection(int face, float u, float v)
{
    const float right = 2 * u - 1, up = 1 - 2 * v;
    switch (face) {
    case 0:
        return {right, 1, up};
    case 1:
        return {-right, -1, up};
    case 2:
        return {-1, right, up};
    case 3:
        return {1, -right, up};
    case 4:
        return {right, -up, 1};
    default:
        return {right, up, -1};
    }
}

QString makeSky(const QString& folder, int pixels)
{
    static const char* const names[6] = {"back", "front", "left", "right", "top", "bottom"};
    for (int face = 0; face < 6; ++face) {
        const QString file = QDir(folder).filePath(QStringLiteral("cube01_%1.jpg").arg(QLatin1String(names[face])));
        if (!drawFace(face, pixels).save(file, "JPG", 95))
            return QStringLiteral("%1 cannot be written").arg(file);
    }
    return {};
}
