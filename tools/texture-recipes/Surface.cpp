#include "Surface.h"

#include "Noise.h"

#include <algorithm>

Surface::Surface(const Parameters& parameters, std::uint32_t seed)
    : m_kind(parameters.text("surface", "clay")), m_colors(parameters.colors("colors", {"#a0523d"})),
      m_variation(parameters.number("variation", 0.1f, 0, 1)), m_pores(parameters.number("pores", 0.5f, 0, 1)),
      m_clouds(parameters.number("clouds", 1, 0, 4)), m_grain(parameters.number("grain", 1, 0, 4)),
      m_specks(parameters.number("specks", 0, 0, 1)), m_seed(seed), m_wood(parameters, seed)
{
    static const QStringList kinds{"clay", "glazed", "wood", "stone", "slate", "concrete", "mineral"};
    if (!kinds.contains(m_kind))
        throw RecipeError("\"surface\" is none of " + kinds.join(QStringLiteral(", ")).toStdString());
}

Rgb Surface::tone(const Block& block) const
{
    const int id = int(block.id & 0xffffff);
    const float pick = Noise::random(id, 1, m_seed) * float(m_colors.size());
    const size_t index = block.color < 0 ? size_t(pick) : size_t(block.color);
    const Rgb& base = m_colors[std::min(index, m_colors.size() - 1)];
    return base * (1 + m_variation * (Noise::random(id, 2, m_seed) - 0.5f) * 2);
}

Sample Surface::at(float u, float v, const Block& block) const
{
    const Rgb base = tone(block);
    if (m_kind == QLatin1String("wood"))
        return m_wood.at(u, v, base, block);
    if (m_kind == QLatin1String("mineral"))
        return mineral(u, v, base);
    if (m_kind == QLatin1String("stone"))
        return stone(u, v, base);
    if (m_kind == QLatin1String("slate"))
        return slate(u, v, base);
    if (m_kind == QLatin1String("concrete"))
        return concrete(u, v, base);
    return m_kind == QLatin1String("glazed") ? Sample{base * (1 + 0.02f * Noise::fbm(u, v, 5, 5, 3, m_seed)), 0}
                                             : clay(u, v, base);
}

Sample Surface::clay(float u, float v, const Rgb& base) const
{
    const float clouds = m_clouds * Noise::fbm(u, v, 9, 9, 4, m_seed + 11);
    const float fire = m_clouds * smooth(0.2f, 0.75f, Noise::fbm(u, v, 7, 12, 4, m_seed + 14));
    const float grain = m_grain * Noise::fbm(u, v, 110, 110, 2, m_seed + 12);
    const float pits = 2 * m_pores * smooth(0.42f, 0.75f, Noise::fbm(u, v, 60, 80, 2, m_seed + 13));
    const float light = 1 + 0.12f * clouds + 0.13f * grain - 0.25f * pits - 0.20f * fire;
    return {base * light, 0.6f * clouds + 0.5f * grain - 1.2f * pits};
}

Sample Surface::stone(float u, float v, const Rgb& base) const
{
    const float clouds =
        m_clouds * (Noise::fbm(u, v, 5, 5, 5, m_seed + 31) + 0.5f * Noise::fbm(u, v, 17, 17, 4, m_seed + 35));
    const float grain = m_grain * Noise::fbm(u, v, 128, 128, 2, m_seed + 32);
    const float pits = m_pores * smooth(0.30f, 0.62f, Noise::fbm(u, v, 48, 48, 2, m_seed + 33));
    const float holes = m_pores * bubbles(u, v, 38, 0.3f, m_seed + 34);
    const float light = 1 + 0.09f * clouds + 0.13f * grain - 0.22f * pits - 0.45f * holes;
    return {base * light, 1.5f * clouds + 0.6f * grain - 2 * pits - 3 * holes};
}

/// Round holes of several sizes; `share` of the places has one.
float Surface::bubbles(float u, float v, int count, float share, std::uint32_t seed) const
{
    const Noise::Cell bubble = Noise::cells(u, v, count, count, 1, seed);
    const float radius = share - Noise::random(int(bubble.id & 0xffff), 1, m_seed);
    return radius > 0 ? smooth(radius * 0.9f + 0.08f, radius * 0.5f, bubble.nearest) : 0;
}

Sample Surface::slate(float u, float v, const Rgb& base) const
{
    const float layers = Noise::fbm(u, v, 4, 14, 4, m_seed + 41);
    const float steps = std::floor((layers + 1) * 5) / 5 - 1;
    const float grain = Noise::fbm(u, v, 40, 120, 2, m_seed + 42);
    const float rust = smooth(0.35f, 0.8f, Noise::fbm(u, v, 6, 6, 3, m_seed + 43));
    const Rgb stained = mix(base, Rgb{0.42f, 0.34f, 0.26f}, 0.25f * rust);
    return {stained * (1 + 0.16f * steps + 0.08f * grain), 2.5f * steps + 0.4f * grain};
}

Sample Surface::concrete(float u, float v, const Rgb& base) const
{
    const float bend = 0.04f * Noise::fbm(u, v, 4, 4, 3, m_seed + 54);
    const float clouds = m_clouds * (Noise::fbm(u + bend, v - bend, 3, 3, 6, m_seed + 51) +
                                     0.6f * Noise::fbm(u, v, 11, 13, 4, m_seed + 55));
    const float grain = m_grain * Noise::fbm(u, v, 150, 150, 2, m_seed + 52);
    const float pore = m_pores * bubbles(u, v, 26, 0.2f, m_seed + 53);
    // Stones that the float or the grinder left just under the skin.
    const Noise::Cell stone = Noise::cells(u + bend, v, 56, 56, 1, m_seed + 56);
    const float speck =
        m_specks * smooth(0, 0.15f, stone.edge - 0.06f) * (Noise::random(int(stone.id & 0xffffff), 2, m_seed) - 0.5f);
    return {base * (1 + 0.08f * clouds + 0.05f * grain - 0.4f * pore + 0.24f * speck),
            0.4f * clouds + 0.25f * grain - 2.5f * pore};
}

/// Pressed mineral fibre: pinholes and short worm-like fissures.
Sample Surface::mineral(float u, float v, const Rgb& base) const
{
    const float grain = m_grain * Noise::fbm(u, v, 120, 120, 2, m_seed + 61);
    const float crest = 1 - std::abs(Noise::fbm(u, v, 26, 18, 2, m_seed + 62)) * 6;
    const float fissure =
        m_pores * smooth(0.35f, 0.8f, crest) * smooth(0.12f, 0.3f, Noise::perlin(u, v, 44, 40, m_seed + 63));
    const float pin = m_pores * bubbles(u, v, 90, 0.34f, m_seed + 64);
    const float hole = std::max(fissure, 0.8f * pin);
    return {base * (1 + 0.03f * grain - 0.42f * hole), 0.4f * grain - 3 * hole};
}
