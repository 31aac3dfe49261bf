#include "Families.h"
#include "Noise.h"

#include <algorithm>

namespace {

class Stone {
public:
    explicit Stone(const Parameters& p)
        : m_kind(p.text("kind", "marble")), m_seed(std::uint32_t(p.whole("seed", 1))),
          m_colors(p.colors("colors", {"#ece9e4", "#8d8f94"})), m_scale(p.whole("scale", 3, 1, 64)),
          m_contrast(p.number("contrast", 1, 0, 3)), m_holes(p.number("holes", 1, 0, 1))
    {
        static const QStringList kinds{"marble", "granite", "travertine", "sandstone", "limestone"};
        if (!kinds.contains(m_kind))
            throw RecipeError("\"kind\" is none of " + kinds.join(QStringLiteral(", ")).toStdString());
        if (m_colors.size() < 2)
            throw RecipeError("\"colors\" needs at least two");
    }

    Sample at(float u, float v) const
    {
        if (m_kind == QLatin1String("granite"))
            return granite(u, v);
        if (m_kind == QLatin1String("sandstone"))
            return sandstone(u, v);
        if (m_kind == QLatin1String("limestone"))
            return limestone(u, v);
        return m_kind == QLatin1String("travertine") ? travertine(u, v) : marble(u, v);
    }

private:
    /// Veins follow the pressure that folded the stone: a few long ones one way, thinner ones across, clouds between.
    Sample marble(float u, float v) const
    {
        const float fold = Noise::fbm(u, v, m_scale, m_scale, 6, m_seed + 1);
        const float crumple = Noise::fbm(u, v, m_scale * 4, m_scale * 4, 4, m_seed + 2);
        const float presence = smooth(-0.45f, 0.35f, Noise::fbm(u, v, 2, 2, 3, m_seed + 5));
        const float rising = float(m_scale) * (u + v) + 0.9f * fold + 0.07f * crumple;
        const float falling = float(m_scale) * (2 * u - v) + 1.1f * fold - 0.11f * crumple;
        const float steep = float(m_scale) * (u + 3 * v) - 0.8f * fold + 0.12f * crumple;
        const float width = 0.010f + 0.022f * smooth(-0.2f, 0.6f, Noise::fbm(u, v, 3, 3, 3, m_seed + 3));
        const float clouds = clamp01(0.5f + 0.8f * Noise::fbm(u + 0.1f * fold, v, m_scale, m_scale * 2, 5, m_seed + 6));
        const float veins = 0.85f * vein(rising, width) * presence + 0.16f * vein(rising + 0.08f, 4 * width) +
                            0.40f * vein(falling, 0.6f * width) * (1 - 0.6f * presence) +
                            0.25f * vein(steep, 0.5f * width) * presence + 0.14f * clouds * clouds;
        return {mix(m_colors[0], m_colors[1], clamp01(m_contrast * veins)) * (0.985f + 0.03f * clouds), 0};
    }

    /// A crest wherever `place` is a whole number, with a faint seam of colour to either side.
    static float vein(float place, float width)
    {
        const float distance = std::abs(fraction(place + 0.5f) - 0.5f);
        return 0.75f * std::exp(-distance / width) + 0.25f * std::exp(-distance / (5 * width));
    }

    /// Grains of several minerals in two sizes, with dark mica between.
    Sample granite(float u, float v) const
    {
        const float bu = u + 0.006f * Noise::fbm(u, v, 40, 40, 2, m_seed + 7);
        const float bv = v + 0.006f * Noise::fbm(u, v, 40, 40, 2, m_seed + 8);
        const int n = m_scale * 12;
        const Rgb coarse = mineral(Noise::cells(bu, bv, n, n, 1, m_seed + 1), 0);
        const Noise::Cell small = Noise::cells(bu, bv, n * 2, n * 2, 1, m_seed + 2);
        const float patch = 0.10f * Noise::fbm(u, v, 9, 9, 3, m_seed + 10);
        const bool mica = Noise::random(int(small.id & 0xffffff), 3, m_seed) > 0.86f + patch;
        const Rgb color = mica ? m_colors.back() * (0.7f + 0.5f * Noise::random(int(small.id & 0xffff), 4, m_seed))
                               : mix(coarse, mineral(small, 5), 0.35f);
        return {color * (1 + 0.05f * Noise::fbm(u, v, 4, 4, 3, m_seed + 9)), 0};
    }

    Rgb mineral(const Noise::Cell& cell, int salt) const
    {
        const int id = int(cell.id & 0xffffff);
        const float pick = Noise::random(id, salt, m_seed) * float(m_colors.size() - 1);
        return m_colors[std::min(size_t(pick), m_colors.size() - 2)] *
               (0.88f + 0.24f * Noise::random(id, salt + 1, m_seed));
    }

    /// Bands with long holes in them.
    Sample travertine(float u, float v) const
    {
        const float bent = v + 0.035f * Noise::fbm(u, v, 2, 3, 4, m_seed + 1);
        const float bands = Noise::fbm(u, bent, 1, m_scale * 5, 5, m_seed + 2);
        const float fine = Noise::fbm(u, bent, 3, m_scale * 24, 2, m_seed + 3);
        const float holes = m_holes * smooth(0.42f, 0.6f,
                                             Noise::fbm(u, bent, 14, m_scale * 22, 3, m_seed + 4) +
                                                 0.35f * Noise::fbm(u, bent, 2, m_scale * 3, 2, m_seed + 5));
        const float t = clamp01(0.5f + 0.8f * m_contrast * bands + 0.22f * fine);
        return {mix(mix(m_colors[0], m_colors[1], t), m_colors[1] * 0.55f, 0.8f * holes), -4 * holes + 0.3f * fine};
    }

    /// Sand laid down by water: fine leaves that dip one way, then another, and grains that one could feel.
    Sample sandstone(float u, float v) const
    {
        const float bent = v + 0.05f * Noise::fbm(u, v, 1, 2, 4, m_seed + 1);
        const float beds = Noise::fbm(u, bent, 1, m_scale * 4, 3, m_seed + 2);
        const float leaves = Noise::perlin(u, bent, 2, m_scale * 26, m_seed + 3) +
                             0.6f * Noise::perlin(u, bent + 0.004f * Noise::fbm(u, v, 20, 20, 2, m_seed + 9), 3,
                                                  m_scale * 60, m_seed + 4);
        const float grain = Noise::fbm(u, v, 170, 170, 2, m_seed + 5);
        const float iron = smooth(0.25f, 0.7f, Noise::fbm(u, bent, 2, m_scale * 6, 4, m_seed + 6));
        const float t = clamp01(0.45f + m_contrast * (0.50f * beds + 0.42f * leaves));
        const Rgb sand = mix(mix(m_colors[0], m_colors[1], t), m_colors.back(), 0.30f * iron);
        return {sand * (1 + 0.16f * grain), 0.8f * leaves + 1.1f * grain};
    }

    /// Mud of an old sea, with the shells that fell into it.
    Sample limestone(float u, float v) const
    {
        const float clouds = Noise::fbm(u, v, 3, 5, 6, m_seed + 1);
        const float grain = Noise::fbm(u, v, 130, 130, 2, m_seed + 2);
        const float shells = std::max(shell(u, v, 16, m_seed + 3), 0.8f * shell(u, v, 34, m_seed + 4));
        const float pits = m_holes * smooth(0.42f, 0.62f, Noise::fbm(u, v, 40, 52, 3, m_seed + 5));
        const float t = clamp01(0.5f + 0.55f * m_contrast * clouds);
        const Rgb ground = mix(m_colors[0], m_colors[1], t) * (1 + 0.07f * grain);
        return {mix(ground, m_colors.back(), 0.55f * shells) * (1 - 0.3f * pits),
                0.5f * grain + 0.6f * shells - 2 * pits};
    }

    /// A crescent in one cell of three.
    float shell(float u, float v, int count, std::uint32_t seed) const
    {
        const Noise::Cell cell = Noise::cells(u, v, count, count, 1, seed);
        const int id = int(cell.id & 0xffffff);
        if (Noise::random(id, 1, m_seed) > 0.3f)
            return 0;
        const float angle = 6.2832f * Noise::random(id, 2, m_seed);
        const float radius = 0.12f + 0.16f * Noise::random(id, 3, m_seed);
        const float turned = cell.dx * std::cos(angle) + cell.dy * std::sin(angle);
        return smooth(0.05f, 0.02f, std::abs(cell.nearest - radius)) * smooth(0.1f * radius, 0.7f * radius, turned);
    }

    QString m_kind;
    std::uint32_t m_seed;
    std::vector<Rgb> m_colors;
    int m_scale;
    float m_contrast;
    float m_holes;
};

}  // namespace

Picture drawStone(const Parameters& parameters, int size)
{
    const Stone stone(parameters);
    Picture picture(size);
    picture.fill([&](float u, float v) { return stone.at(u, v); });
    return picture;
}
