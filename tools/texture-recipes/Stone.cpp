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
        if (m_kind != QLatin1String("marble") && m_kind != QLatin1String("granite") &&
            m_kind != QLatin1String("travertine"))
            throw RecipeError("\"kind\" is none of marble, granite, travertine");
        if (m_colors.size() < 2)
            throw RecipeError("\"colors\" needs at least two");
    }

    Sample at(float u, float v) const
    {
        if (m_kind == QLatin1String("granite"))
            return granite(u, v);
        return m_kind == QLatin1String("travertine") ? travertine(u, v) : marble(u, v);
    }

private:
    /// Veins are the crests of noise over a bent ground: a few broad ones and many fine.
    Sample marble(float u, float v) const
    {
        const float bu = u + 0.11f * Noise::fbm(u, v, m_scale, m_scale, 4, m_seed + 1);
        const float bv = v + 0.11f * Noise::fbm(u, v, m_scale, m_scale, 4, m_seed + 2);
        const float broad = vein(bu, bv, m_scale, 0.965f, m_seed + 3);
        const float fine = vein(bu, bv, m_scale * 3, 0.985f, m_seed + 4);
        const float presence = smooth(-0.35f, 0.4f, Noise::fbm(u, v, m_scale, m_scale, 3, m_seed + 5));
        const float clouds = 0.5f + 0.5f * Noise::fbm(bu, bv, m_scale, m_scale, 5, m_seed + 6);
        const float veins =
            clamp01(m_contrast * (0.85f * broad * presence + 0.35f * fine * presence + 0.16f * clouds * clouds));
        return {mix(m_colors[0] * (0.99f + 0.02f * clouds), m_colors[1], veins), 0};
    }

    static float vein(float u, float v, int scale, float sharp, std::uint32_t seed)
    {
        const float crest = 1 - std::min(1.0f, std::abs(Noise::fbm(u, v, scale, scale, 4, seed)) * 1.6f);
        return smooth(sharp - 0.17f, 1, crest) * 0.45f + smooth(sharp, 1, crest) * 0.55f;
    }

    /// Grains of several minerals in two sizes, with dark mica between.
    Sample granite(float u, float v) const
    {
        const float bu = u + 0.006f * Noise::fbm(u, v, 40, 40, 2, m_seed + 7);
        const float bv = v + 0.006f * Noise::fbm(u, v, 40, 40, 2, m_seed + 8);
        const int n = m_scale * 16;
        const Rgb coarse = mineral(Noise::cells(bu, bv, n, n, 1, m_seed + 1), 0);
        const Noise::Cell small = Noise::cells(bu, bv, n * 2, n * 2, 1, m_seed + 2);
        const bool mica = Noise::random(int(small.id & 0xffffff), 3, m_seed) > 0.84f;
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
        const float bands = Noise::fbm(u, bent, 1, m_scale * 4, 4, m_seed + 2);
        const float fine = Noise::fbm(u, bent, 3, m_scale * 24, 2, m_seed + 3);
        const float holes = m_holes * smooth(0.42f, 0.6f,
                                             Noise::fbm(u, bent, 14, m_scale * 22, 3, m_seed + 4) +
                                                 0.35f * Noise::fbm(u, bent, 2, m_scale * 3, 2, m_seed + 5));
        const float t = clamp01(0.5f + 0.6f * m_contrast * bands + 0.15f * fine);
        return {mix(mix(m_colors[0], m_colors[1], t), m_colors[1] * 0.55f, 0.8f * holes), -4 * holes + 0.3f * fine};
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
