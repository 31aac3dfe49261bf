#pragma once

#include <QtCore/qfloat16.h>

#include <cstdint>
#include <cstring>

namespace kiv {

/// The bits of the nearest half float, as OpenGL takes them.
inline std::uint16_t HalfBits(float value)
{
    const qfloat16 half(value);
    std::uint16_t bits;
    std::memcpy(&bits, &half, sizeof bits);
    return bits;
}

inline float FromHalfBits(std::uint16_t bits)
{
    qfloat16 half;
    std::memcpy(static_cast<void*>(&half), &bits, sizeof bits);
    return half;
}

}  // namespace kiv
