#include "BrdfTable.h"

#include <array>
#include <cmath>
#include <cstdint>

namespace kiv {

namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr int SampleCount = 128;

struct Vector {
    double x, y, z;
};

struct Pair {
    double scale = 0, bias = 0;
};

double radicalInverse(std::uint32_t i)
{
    double result = 0;
    for (double digit = 0.5; i != 0; i >>= 1, digit /= 2)
        result += (i & 1) ? digit : 0;
    return result;
}

// Points spread evenly over the unit disc.
struct Point {
    double a, b;
};
using Disc = std::array<Point, SampleCount>;

Disc makeDisc()
{
    Disc disc;
    for (std::uint32_t i = 0; i < SampleCount; ++i) {
        const double radius = std::sqrt((i + 0.5) / SampleCount), angle = 2 * Pi * radicalInverse(i);
        disc[i] = {radius * std::cos(angle), radius * std::sin(angle)};
    }
    return disc;
}

// A half vector of those that the view sees (Heitz, "Sampling the GGX Distribution of Visible Normals", 2018); view.y
// is 0.
Vector visibleNormal(const Vector& view, double alpha, const Point& point)
{
    const double length = std::sqrt(alpha * alpha * view.x * view.x + view.z * view.z);
    const Vector stretched{alpha * view.x / length, 0, view.z / length};
    const double a = point.a, share = 0.5 * (1 + stretched.z);
    const double b = (1 - share) * std::sqrt(1 - a * a) + share * point.b;
    const double c = std::sqrt(std::fmax(0, 1 - a * a - b * b));
    // a along the y axis, b along the axis that is upright to it and to the stretched view.
    const Vector h{alpha * (c * stretched.x - b * stretched.z), alpha * a,
                   std::fmax(0, b * stretched.x + c * stretched.z)};
    const double size = std::sqrt(h.x * h.x + h.y * h.y + h.z * h.z);
    return {h.x / size, h.y / size, h.z / size};
}

// Smith's auxiliary function of GGX.
double lambda(double cosine, double alpha)
{
    const double square = cosine * cosine;
    return (std::sqrt(1 + alpha * alpha * (1 - square) / square) - 1) / 2;
}

// Each visible normal weighs as the masking of both directions over that of the view alone.
Pair integrate(double cosine, double roughness, const Disc& disc)
{
    const double alpha = roughness * roughness;
    const Vector view{std::sqrt(1 - cosine * cosine), 0, cosine};
    const double masking = 1 + lambda(cosine, alpha);
    Pair sum;
    for (const Point& point : disc) {
        const Vector h = visibleNormal(view, alpha, point);
        const double along = view.x * h.x + view.z * h.z;
        const double lightZ = 2 * along * h.z - view.z;
        if (lightZ <= 0)
            continue;
        const double weight = masking / (masking + lambda(lightZ, alpha));
        const double rest = 1 - along, fresnel = rest * rest * rest * rest * rest;
        sum.scale += weight * (1 - fresnel);
        sum.bias += weight * fresnel;
    }
    return {sum.scale / SampleCount, sum.bias / SampleCount};
}

CBrdfTable makeTable()
{
    CBrdfTable table;
    const Disc disc = makeDisc();
    constexpr double size = CBrdfTable::Size;
    for (int y = 0; y < CBrdfTable::Size; ++y) {
        for (int x = 0; x < CBrdfTable::Size; ++x) {
            const Pair pair = integrate((x + 0.5) / size, (y + 0.5) / size, disc);
            table.texels.push_back(static_cast<float>(pair.scale));
            table.texels.push_back(static_cast<float>(pair.bias));
        }
    }
    return table;
}

}  // namespace

const CBrdfTable& BrdfTable()
{
    static const CBrdfTable table = makeTable();
    return table;
}

}  // namespace kiv
