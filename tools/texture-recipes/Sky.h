#pragma once

#include <QString>

/// The sky box of the previews: a calm late morning over meadows, with the sun to the left behind who looks at the
/// scene.

/// A direction in the world: x to the right, y away, z up.
struct Direction {
    float x = 0, y = 0, z = 0;
};

/// Red, green and blue in linear light, 1 is white; at most about 1. The length of the direction does not matter.
struct SkyLight {
    float r = 0, g = 0, b = 0;
};
SkyLight skyLight(const Direction& direction);

/// What a texel of a face looks at. Faces in the order back, front, left, right, top, bottom; u to the right and v down
/// the picture, 0..1.
Direction skyDirection(int face, float u, float v);

/// Writes cube01_back.jpg and so on for all six faces to the folder. Empty, or what went wrong. All pictures are made
/// of skyLight, so they join without a seam.
QString makeSky(const QString& folder, int pixels);
