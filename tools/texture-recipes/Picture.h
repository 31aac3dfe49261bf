#pragma once

#include <QImage>
#include <QString>

#include <cmath>
#include <functional>
#include <vector>

/// A colour in sRGB, 0..1 a channel.
struct Rgb {
    float r = 0, g = 0, b = 0;
};

inline Rgb operator*(const Rgb& c, float f)
{
    return {c.r * f, c.g * f, c.b * f};
}
inline Rgb operator+(const Rgb& a, const Rgb& b)
{
    return {a.r + b.r, a.g + b.g, a.b + b.b};
}

inline float clamp01(float x)
{
    return x < 0 ? 0 : x > 1 ? 1 : x;
}
inline float mix(float a, float b, float t)
{
    return a + (b - a) * t;
}
inline Rgb mix(const Rgb& a, const Rgb& b, float t)
{
    return {mix(a.r, b.r, t), mix(a.g, b.g, t), mix(a.b, b.b, t)};
}
inline float smooth(float from, float to, float x)
{
    const float t = clamp01((x - from) / (to - from));
    return t * t * (3 - 2 * t);
}
inline float fraction(float x)
{
    return x - std::floor(x);
}

/// What a family answers for a point: its colour, and its height in pixels of relief at a size of 512.
struct Sample {
    Rgb color;
    float height = 0;
};

/// A square texture while it is made.
struct Picture {
    int size = 0;
    std::vector<Rgb> colors;
    std::vector<float> heights;

    explicit Picture(int size_) : size(size_), colors(size_t(size_) * size_t(size_)), heights(colors.size()) {}

    size_t index(int x, int y) const { return size_t(y) * size_t(size) + size_t(x); }

    /// Asks for every pixel's centre; u to the right and v down, 0..1.
    void fill(const std::function<Sample(float u, float v)>& sampler);

    QImage color() const;
    /// Tangent-space normals, green up, from the heights across the seam.
    QImage normals(float strength) const;
};
