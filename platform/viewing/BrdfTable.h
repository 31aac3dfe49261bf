#pragma once

#include <vector>

namespace kiv {

/// The split-sum table of the GGX lobe with the height-correlated Smith masking: for a cosine of view (x) and a
/// roughness (y), at texel centres, the scale (r) and the bias (g) of F0, so that a surface in a white furnace reflects
/// F0 * r + g in one bounce. Roughness is perceptual; alpha is its square.
struct CBrdfTable {
    static constexpr int Size = 32;
    std::vector<float> texels;  ///< Size * Size * 2, rows of rising roughness
};

/// Computed once, in some milliseconds. Any thread.
const CBrdfTable& BrdfTable();

}  // namespace kiv
