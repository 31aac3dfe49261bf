#pragma once

#include <QImage>

#include <array>

namespace kiv {

/// The six sides of a cube map in the order of OpenGL: +x, -x, +y, -y, +z, -z, the first row of each as OpenGL wants
/// it. All square, of the same size, Format_RGBA8888, sRGB.
using CCubeFaces = std::array<QImage, 6>;

/// A sky box gains nothing from longer sides; six of this size are 100 MB.
constexpr int MaxSkySide = 2048;

/// From the pictures of a sky box in their order (see kiv/Sky.h), cut and scaled to the smallest of them (a square), or
/// to `maxSide` and MaxSkySide. False with the reason when one of them is empty; the faces are then unchanged.
bool CubeFacesOfSky(const std::array<QImage, 6>& pictures, int maxSide, CCubeFaces& faces, QString& reason);

}  // namespace kiv
