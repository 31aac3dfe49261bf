#include "Wood.h"

#include "Noise.h"

#include <algorithm>

/// A point of a board: where its fibre runs, and how far it is from the heart of the trunk.
struct Wood::Grain {
    float x = 0;       ///< along the fibre
    float y = 0;       ///< across it
    float radius = 0;  ///< from the heart, in units of the square
    float knot = 0;    ///< 0 outside a knot, 1 in its middle
};

Wood::Wood(const Parameters& parameters, std::uint32_t seed)
    : m_rings(parameters.whole("rings", 70, 1, 400)), m_figure(parameters.number("figure", 1, 0, 10)),
      m_late(parameters.number("late", 0.24f, 0, 1)), m_pores(parameters.number("pores", 0.5f, 0, 1)),
      m_knots(parameters.number("knots", 0, 0, 1)), m_seed(seed)
{
}

Sample Wood::at(float u, float v, const Rgb& base, const Block& block) const
{
    if (block.length <= 0)
        return paint(veneer(u, v), base);
    Grain grain = block.upright ? board(v, u, block) : board(u, v, block);
    bendRoundKnot(grain, block);
    return paint(grain, base);
}

/// The board is a plane through the trunk: its rings are circles about the heart, which lies beside and below it.
Wood::Grain Wood::board(float u, float v, const Block& block) const
{
    const int id = int(block.id & 0xffff);
    Grain grain;
    grain.x = fraction(u + Noise::random(id, 3, m_seed));
    grain.y = fraction(v + Noise::random(id, 4, m_seed));
    const float beside = (Noise::random(id, 6, m_seed) - 0.5f) * 2.4f * block.width;
    const float wander = Noise::perlin(grain.x, Noise::random(id, 7, m_seed), 3, 1, m_seed + 20) +
                         0.4f * Noise::perlin(grain.x, Noise::random(id, 8, m_seed), 7, 1, m_seed + 19);
    // The trunk tapers, so that the rings of a board from near its heart end in arches.
    const float along = id % 2 ? block.along : 1 - block.along;
    const float below = block.width * (0.3f + m_figure * (0.9f * along + 0.07f * wander));
    const float across = (block.across - 0.5f + 0.07f * m_figure * wander) * block.width - beside;
    grain.radius = std::sqrt(across * across + below * below) +
                   0.003f * m_figure * Noise::fbm(grain.x, grain.y, 5, 26, 3, m_seed + 22);
    return grain;
}

/// Peeled from the trunk: arches that come back to themselves in both directions.
Wood::Grain Wood::veneer(float u, float v) const
{
    const float across = 0.30f * std::sin(6.2831853f * v + 1.4f * Noise::perlin(u, v, 1, 1, m_seed + 21));
    const float below = 0.28f + 0.24f * m_figure * Noise::fbm(u, v, 1, 1, 2, m_seed + 20);
    const float ripple = 0.01f * m_figure * Noise::fbm(u, v, 5, 12, 3, m_seed + 22);
    return {u, v, std::sqrt(across * across + below * below) + ripple, 0};
}

void Wood::bendRoundKnot(Grain& grain, const Block& block) const
{
    const int id = int(block.id & 0xffff);
    if (Noise::random(id, 11, m_seed) >= m_knots)
        return;
    const float size = block.width * (0.05f + 0.05f * Noise::random(id, 12, m_seed));
    const float dx = (block.along - 0.15f - 0.7f * Noise::random(id, 13, m_seed)) * block.length * 0.75f;
    const float dy = (block.across - 0.25f - 0.5f * Noise::random(id, 14, m_seed)) * block.width;
    const float square = (dx * dx + dy * dy) / (size * size);
    const float side = dy < 0 ? -1.0f : 1.0f;
    grain.radius += side * size * 1.1f * std::exp(-square / 9) * smooth(0, 1.2f, std::abs(dy) / size);
    grain.knot = smooth(1.2f, 0.7f, std::sqrt(square));
}

/// Rings rise softly and fall sharply, each as wide and dark as its year was; then fibres and pores.
Sample Wood::paint(const Grain& grain, const Rgb& base) const
{
    const float years = grain.radius * float(m_rings) + 0.6f * Noise::perlin(grain.radius, 0.5f, 9, 1, m_seed + 28);
    const float ring = fraction(years);
    const float year = 0.45f + 0.9f * Noise::random(int(std::floor(years)), 15, m_seed);
    const float late = year * ring * ring * (1 - smooth(0.82f, 1, ring)) * (1 - grain.knot);
    const float fibre = Noise::perlin(grain.x, grain.y, 4, 190, m_seed + 23) +
                        0.7f * Noise::perlin(grain.x, grain.y, 9, 256, m_seed + 24);
    const float pore =
        m_pores * smooth(0.28f, 0.6f, Noise::perlin(grain.x, grain.y, 18, 230, m_seed + 25)) * (0.35f + 0.65f * ring);
    const float clouds = Noise::fbm(grain.x, grain.y, 2, 5, 3, m_seed + 26);
    const float light = 1.04f + 0.07f * clouds + 0.07f * fibre - m_late * late - 0.30f * pore;
    // Late wood is redder as well as darker.
    const Rgb warm{base.r * light, base.g * (light - 0.05f * late), base.b * (light - 0.10f * late)};
    const Rgb dark{base.r * 0.62f * light, base.g * 0.48f * light, base.b * 0.38f * light};
    return {mix(warm, dark, 0.85f * grain.knot), -0.8f * pore - 0.45f * late + 0.15f * fibre};
}
