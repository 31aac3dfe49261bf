#pragma once

namespace kiv {

/// A colour as shown on the screen (sRGB), each component 0..255.
struct CColor {
    int r = 0, g = 0, b = 0, a = 255;

    CColor() = default;
    CColor(int red, int green, int blue, int alpha = 255) : r(red), g(green), b(blue), a(alpha) {}
};

}  // namespace kiv
