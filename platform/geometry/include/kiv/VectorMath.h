#pragma once

#include <kiv/Vector.h>

#include <cfloat>
#include <cmath>

namespace kiv {

template <typename T>
CVec2<T> operator-(const CVec2<T>& a, const CVec2<T>& b)
{
    return {a.x - b.x, a.y - b.y};
}

template <typename T>
CVec3<T> operator+(const CVec3<T>& a, const CVec3<T>& b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

template <typename T>
CVec3<T> operator-(const CVec3<T>& a, const CVec3<T>& b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

template <typename T>
CVec3<T> operator*(const CVec3<T>& a, T factor)
{
    return {a.x * factor, a.y * factor, a.z * factor};
}

template <typename T>
T Dot(const CVec3<T>& a, const CVec3<T>& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

template <typename T>
CVec3<T> Cross(const CVec3<T>& a, const CVec3<T>& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

template <typename T>
T Length(const CVec3<T>& a)
{
    return std::sqrt(Dot(a, a));
}

/// Of length 1; (0, 0, 0) and what is not finite give no numbers.
template <typename T>
CVec3<T> Normalized(const CVec3<T>& a)
{
    return a * (T(1) / Length(a));
}

/// `a` without its part along `direction`, which has length 1.
template <typename T>
CVec3<T> Perpendicular(const CVec3<T>& a, const CVec3<T>& direction)
{
    return a - direction * Dot(a, direction);
}

template <typename To, typename From>
CVec2<To> VectorCast(const CVec2<From>& a)
{
    return {To(a.x), To(a.y)};
}

template <typename To, typename From>
CVec3<To> VectorCast(const CVec3<From>& a)
{
    return {To(a.x), To(a.y), To(a.z)};
}

/// Finite, and small enough to be a float.
inline bool FitsFloat(double value)
{
    return std::abs(value) <= FLT_MAX;
}

inline bool FitsFloat(const CVec3<double>& a)
{
    return FitsFloat(a.x) && FitsFloat(a.y) && FitsFloat(a.z);
}

}  // namespace kiv
