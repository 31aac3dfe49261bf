#pragma once

#include <cmath>

namespace kiv {

/// The linear light of an sRGB value, both 0..1.
inline double DecodeSrgb(double value)
{
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

/// The sRGB value of linear light, both 0..1.
inline double EncodeSrgb(double light)
{
    return light <= 0.0031308 ? light * 12.92 : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
}

}  // namespace kiv
