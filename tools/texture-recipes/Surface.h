#pragma once

#include "Layout.h"
#include "Parameters.h"

/// The face of a block, or of a whole texture: clay, glazed, wood, stone, slate, concrete.
class Surface {
public:
    /// Reads "surface", "colors", "variation" and what the kind needs.
    Surface(const Parameters& parameters, std::uint32_t seed);

    /// Fibres and layers run along u, or along v in an upright block.
    Sample at(float u, float v, const Block& block) const;

private:
    Rgb tone(const Block& block) const;
    Sample clay(float u, float v, const Rgb& base) const;
    Sample wood(float u, float v, const Rgb& base, const Block& block) const;
    Sample stone(float u, float v, const Rgb& base) const;
    Sample slate(float u, float v, const Rgb& base) const;
    Sample concrete(float u, float v, const Rgb& base) const;

    QString m_kind;
    std::vector<Rgb> m_colors;
    float m_variation;
    int m_rings;
    float m_figure;
    float m_pores;
    std::uint32_t m_seed;
};
