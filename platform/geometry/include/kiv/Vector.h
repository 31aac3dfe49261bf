#pragma once

#include <cstddef>

namespace kiv {

/// Small fixed-size vectors. Plain values: public components, index access in declaration order, exact comparison.
template <typename T>
struct CVec2 {
    T x{}, y{};

    CVec2() = default;
    CVec2(T x_, T y_) : x(x_), y(y_) {}

    T& operator[](std::size_t i) { return i == 0 ? x : y; }
    const T& operator[](std::size_t i) const { return i == 0 ? x : y; }
    friend bool operator==(const CVec2& a, const CVec2& b) { return a.x == b.x && a.y == b.y; }
    friend bool operator!=(const CVec2& a, const CVec2& b) { return !(a == b); }
};

template <typename T>
struct CVec3 {
    T x{}, y{}, z{};

    CVec3() = default;
    CVec3(T x_, T y_, T z_) : x(x_), y(y_), z(z_) {}

    T& operator[](std::size_t i) { return i == 0 ? x : i == 1 ? y : z; }
    const T& operator[](std::size_t i) const { return i == 0 ? x : i == 1 ? y : z; }
    friend bool operator==(const CVec3& a, const CVec3& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }
    friend bool operator!=(const CVec3& a, const CVec3& b) { return !(a == b); }
};

/// Also the colour type: x, y, z, w are red, green, blue, alpha, each 0..1.
template <typename T>
struct CVec4 {
    T x{}, y{}, z{}, w{};

    CVec4() = default;
    CVec4(T x_, T y_, T z_, T w_) : x(x_), y(y_), z(z_), w(w_) {}

    T& operator[](std::size_t i) { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }
    const T& operator[](std::size_t i) const { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }
    friend bool operator==(const CVec4& a, const CVec4& b)
    {
        return a.x == b.x && a.y == b.y && a.z == b.z && a.w == b.w;
    }
    friend bool operator!=(const CVec4& a, const CVec4& b) { return !(a == b); }
};

}  // namespace kiv
