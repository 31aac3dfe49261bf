#include "Surface.h"

#include "Noise.h"

#include <algorithm>

Surface::Surface(const Parameters& parameters, std::uint32_t seed)
    : m_kind(parameters.text("surface", "clay")), m_colors(parameters.colors("colors", {"#a0523d"})),
      m_variation(parameters.number("variation", 0.1f, 0, 1)), m_rings(parameters.whole("rings", 14, 1, 200)),
      m_figure(parameters.number("figure", 1, 0, 10)), m_pores(parameters.number("pores", 0.5f, 0, 1)), m_seed(seed)
{
    static const QStringList kinds{"clay", "glazed", "wood", "stone", "slate", "concrete"};
    if (!kinds.contains(m_kind))
        throw RecipeError("\"surface\" is none of " + kinds.join(QStringLiteral(", ")).toStdString());
}

Rgb Surface::tone(const Block& block) const
{
    const int id = int(block.id & 0xffffff);
    const float pick = Noise::random(id, 1, m_seed) * float(m_colors.size());
    const Rgb& base = m_colors[std::min(size_t(pick), m_colors.size() - 1)];
    return base * (1 + m_variation * (Noise::random(id, 2, m_seed) - 0.5f) * 2);
}

Sample Surface::at(float u, float v, const Block& block) const
{
    const Rgb base = tone(block);
    if (m_kind == QLatin1String("wood"))
        return block.upright ? wood(v, u, base, block) : wood(u, v, base, block);
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
    const float clouds = Noise::fbm(u, v, 9, 9, 4, m_seed + 11);
    const float grain = Noise::fbm(u, v, 90, 90, 2, m_seed + 12);
    const float pits = smooth(0.45f, 0.75f, Noise::perlin(u, v, 70, 70, m_seed + 13));
    const float light = 1 + 0.12f * clouds + 0.10f * grain - 0.25f * pits;
    return {base * light, 0.6f * clouds + 0.5f * grain - 1.2f * pits};
}

/// Rings as a row of soft rises and sharp falls across the fibre, bent along it; then fibres and pores.
Sample Surface::wood(float u, float v, const Rgb& base, const Block& block) const
{
    const float x = fraction(u + Noise::random(int(block.id & 0xffff), 3, m_seed));
    const float y = fraction(v + Noise::random(int(block.id & 0xffff), 4, m_seed));
    const float bend =
        m_figure * (0.75f * Noise::perlin(x, y, 1, 2, m_seed + 21) + 0.22f * Noise::perlin(x, y, 2, 6, m_seed + 22) +
                    0.05f * Noise::perlin(x, y, 7, 30, m_seed + 27));
    const float ring = fraction((y + 0.16f * bend) * float(m_rings));
    const float late = ring * ring * (1 - smooth(0.86f, 1, ring));
    const float fibre = Noise::perlin(x, y, 4, 190, m_seed + 23) + 0.7f * Noise::perlin(x, y, 9, 256, m_seed + 24);
    const float pore = m_pores * smooth(0.40f, 0.7f, Noise::perlin(x, y, 22, 240, m_seed + 25)) * (0.4f + 0.6f * late);
    const float clouds = Noise::fbm(x, y, 2, 4, 3, m_seed + 26);
    const float light = 1.04f + 0.06f * clouds + 0.07f * fibre - 0.24f * late - 0.32f * pore;
    // Late wood is redder as well as darker.
    const Rgb warm{base.r * light, base.g * (light - 0.05f * late), base.b * (light - 0.10f * late)};
    return {warm, -0.8f * pore - 0.35f * late + 0.15f * fibre};
}

Sample Surface::stone(float u, float v, const Rgb& base) const
{
    const float clouds = Noise::fbm(u, v, 5, 5, 5, m_seed + 31);
    const float grain = Noise::fbm(u, v, 128, 128, 2, m_seed + 32);
    const float pits = m_pores * smooth(0.35f, 0.7f, Noise::fbm(u, v, 48, 48, 2, m_seed + 33));
    return {base * (1 + 0.09f * clouds + 0.12f * grain - 0.25f * pits), 2.0f * clouds + 0.6f * grain - 2 * pits};
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
    const float clouds = Noise::fbm(u, v, 3, 3, 5, m_seed + 51);
    const float grain = Noise::fbm(u, v, 150, 150, 2, m_seed + 52);
    const Noise::Cell bubble = Noise::cells(u, v, 26, 26, 1, m_seed + 53);
    const float radius = Noise::random(int(bubble.id & 0xffff), 1, m_seed) - 0.82f;
    const float pore = m_pores * (radius > 0 ? smooth(radius * 1.2f, radius * 0.6f, bubble.nearest) : 0);
    return {base * (1 + 0.09f * clouds + 0.05f * grain - 0.4f * pore), 0.4f * clouds + 0.25f * grain - 2.5f * pore};
}
