#include <kiv/TextureTransform.h>

#include <cmath>

namespace kiv {

namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr double SmallestScale = 0.01;
constexpr double SmallestEntry = 1e-6;

double factorOf(double scale)
{
    return std::abs(scale) < SmallestScale ? std::copysign(1 / SmallestScale, scale) : 1 / scale;
}

}  // namespace

CMatrix3<float> TextureTransform(float rotation, const CVec2<float>& scale, const CVec2<float>& offset)
{
    const double angle = double(rotation) / 180 * Pi;
    const double fx = factorOf(double(scale.x));
    const double fy = factorOf(double(scale.y));
    const double entries[] = {fx * std::cos(angle), -fx * std::sin(angle), -fx * double(offset.x),
                              fy * std::sin(angle), fy * std::cos(angle),  -fy * double(offset.y)};
    CMatrix3<float> transform;
    for (std::size_t i = 0; i < 6; ++i)
        transform.m[i] = std::abs(entries[i]) < SmallestEntry ? 0.0F : float(entries[i]);
    return transform;
}

CVec2<float> PlaceOnTexture(const CMatrix3<float>& transform, const CVec2<float>& place)
{
    const auto row = [&](std::size_t r) {
        return transform(r, 0) * place.x + transform(r, 1) * place.y + transform(r, 2);
    };
    return {row(0), row(1)};
}

}  // namespace kiv
