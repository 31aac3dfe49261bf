#pragma once

#include "Layout.h"
#include "Parameters.h"
#include "Wood.h"

/// The face of a block, or of a whole texture: clay, glazed, stone, slate, concrete, mineral board, wood.
class Surface {
public:
    /// Reads "surface", "colors", "variation" and what the kind needs.
    Surface(const Parameters& parameters, std::uint32_t seed);

    /// Fibres and layers run along u, or along v in an upright block.
    Sample at(float u, float v, const Block& block) const;

private:
    Rgb tone(const Block& block) const;
    Sample clay(float u, float v, const Rgb& base) const;
    Sample stone(float u, float v, const Rgb& base) const;
    Sample slate(float u, float v, const Rgb& base) const;
    Sample concrete(float u, float v, const Rgb& base) const;
    Sample mineral(float u, float v, const Rgb& base) const;
    float bubbles(float u, float v, int count, float share, std::uint32_t seed) const;

    QString m_kind;
    std::vector<Rgb> m_colors;
    float m_variation;
    float m_pores;
    float m_clouds;
    float m_grain;
    float m_specks;
    std::uint32_t m_seed;
    Wood m_wood;
};
