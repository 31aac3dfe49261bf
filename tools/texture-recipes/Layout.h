#pragma once

#include <QString>

#include <cstdint>

/// How blocks (bricks, tiles, slates, planks) cover the unit square without a gap, seamlessly.
struct Layout {
    QString bond = QStringLiteral("running");
    int columns = 4;  ///< blocks in a course; stretchers for the bonds with headers
    int rows = 8;     ///< courses
    std::uint32_t seed = 1;

    static bool isKnown(const QString& bond);
};

/// The block at a point.
struct Block {
    std::uint32_t id = 0;
    float along = 0;   ///< place in the block along its longer side, 0..1
    float across = 0;  ///< and across it, 0..1, downwards where the block lies
    float edge = 0;    ///< distance to its nearest edge, in units of the square
    float bottom = 0;  ///< distance to its lower edge, in units of the square
    float length = 0;  ///< of its longer side, in units of the square; 0 for a texture without blocks
    float width = 0;   ///< of its shorter side
    bool upright = false;
    int color = -1;  ///< which of the surface's colours it takes; -1 when that is left to chance
};

Block blockAt(const Layout& layout, float u, float v);
