#pragma once

namespace kiv {

#if defined(__GNUC__)
/// One texel (red, green, blue, 1) in linear light, worked on as a whole.
using CLight = float __attribute__((vector_size(16)));
#else
struct alignas(16) CLight {
    float channels[4];

    float operator[](int i) const { return channels[i]; }
};

inline CLight operator+(const CLight& a, const CLight& b)
{
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2], a[3] + b[3]};
}
inline CLight operator-(const CLight& a, const CLight& b)
{
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2], a[3] - b[3]};
}
inline CLight operator*(const CLight& a, float f)
{
    return {a[0] * f, a[1] * f, a[2] * f, a[3] * f};
}
inline CLight& operator+=(CLight& a, const CLight& b)
{
    return a = a + b;
}
#endif

}  // namespace kiv
