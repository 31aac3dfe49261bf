#pragma once

#include "Layout.h"
#include "Parameters.h"

/// Sawn wood: every block is a board from another place of the trunk, so that some show arches and some straight rings.
class Wood {
public:
    /// Reads "rings" (over the unit square), "figure" (how far the trunk wanders under the saw), "late" (how dark the
    /// late wood is), "pores", "knots" (share of the boards that have one).
    Wood(const Parameters& parameters, std::uint32_t seed);

    /// Fibres run along u, or along v in an upright block.
    Sample at(float u, float v, const Rgb& base, const Block& block) const;

private:
    struct Grain;

    Grain board(float u, float v, const Block& block) const;
    Grain veneer(float u, float v) const;
    void bendRoundKnot(Grain& grain, const Block& block) const;
    Sample paint(const Grain& grain, const Rgb& base) const;

    int m_rings;
    float m_figure, m_late, m_pores, m_knots;
    std::uint32_t m_seed;
};
