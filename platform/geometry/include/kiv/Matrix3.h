#pragma once

#include <array>
#include <cstddef>

namespace kiv {

/// A 3 x 3 matrix, row-major: element (row, column) multiplies the column vector (u, v, 1). Default: identity.
template <typename T>
struct CMatrix3 {
    std::array<T, 9> m{T(1), T(0), T(0), T(0), T(1), T(0), T(0), T(0), T(1)};

    T& operator()(std::size_t row, std::size_t column) { return m[row * 3 + column]; }
    const T& operator()(std::size_t row, std::size_t column) const { return m[row * 3 + column]; }
    friend bool operator==(const CMatrix3& a, const CMatrix3& b) { return a.m == b.m; }
    friend bool operator!=(const CMatrix3& a, const CMatrix3& b) { return !(a == b); }
};

}  // namespace kiv
