#include "Families.h"
#include "Noise.h"

#include <algorithm>

namespace {

class Textile {
public:
    explicit Textile(const Parameters& p)
        : m_kind(p.text("kind", "weave")), m_seed(std::uint32_t(p.whole("seed", 1))),
          m_colors(p.colors("colors", {"#cdbf9f", "#b9a987"})), m_count(p.whole("count", 32, 2, 128)),
          m_depth(p.number("depth", 5, 0, 60)), m_slub(p.number("slub", 0.4f, 0, 2)), m_under(p.whole("under", 1, 1, 4))
    {
        static const QStringList kinds{"weave", "loop", "pile"};
        if (!kinds.contains(m_kind))
            throw RecipeError("\"kind\" is none of " + kinds.join(QStringLiteral(", ")).toStdString());
    }

    Sample at(float u, float v) const
    {
        if (m_kind == QLatin1String("loop"))
            return loop(u, v);
        return m_kind == QLatin1String("pile") ? pile(u, v) : weave(u, v);
    }

private:
    Rgb yarn(int id, float salt) const
    {
        const float pick = Noise::random(id, int(salt), m_seed) * float(m_colors.size());
        return m_colors[std::min(size_t(pick), m_colors.size() - 1)] *
               (0.93f + 0.14f * Noise::random(id, int(salt) + 1, m_seed));
    }

    /// Warp and weft over and under one another; "under" threads at a time, shifted by one in each row (twill).
    Sample weave(float u, float v) const
    {
        const float bend = 0.14f * m_slub / float(m_count);
        const float x = fraction(u + bend * Noise::fbm(u, v, 6, 20, 2, m_seed + 1)) * float(m_count);
        const float y = fraction(v + bend * Noise::fbm(u, v, 20, 6, 2, m_seed + 2)) * float(m_count);
        const int column = int(x) % m_count, row = int(y) % m_count;
        const bool warpOver = ((column + row) / m_under) % 2 == 0;
        const float fx = x - std::floor(x) - 0.5f, fy = y - std::floor(y) - 0.5f;
        const float across = warpOver ? fx : fy, along = warpOver ? fy : fx;
        const float thick =
            0.43f + 0.07f * m_slub * Noise::perlin(u, v, warpOver ? m_count : 6, warpOver ? 6 : m_count, m_seed + 3);
        const float body = smooth(thick + 0.07f, thick - 0.12f, std::abs(across));
        const float arch = std::cos(along * 3.1f);
        const float round = std::sqrt(std::max(0.0f, 1 - across * across * 3.4f));
        const float fibre = Noise::perlin(u, v, warpOver ? 230 : 50, warpOver ? 50 : 230, m_seed + 4);
        const Rgb color = yarn(warpOver ? column : row + 1000, warpOver ? 1 : 3);
        return {color * ((0.52f + 0.48f * body) * (0.70f + 0.18f * arch + 0.16f * round) * (1 + 0.09f * fibre)),
                m_depth * (0.5f * arch + 0.5f * round) * body + 0.4f * fibre};
    }

    /// Rows of small loops.
    Sample loop(float u, float v) const
    {
        const float y = v * float(m_count);
        const int row = int(y) % m_count;
        const float x = fraction(u + (row % 2 ? 0.5f : 0) / float(m_count)) * float(m_count);
        const int id = int(Noise::hash(int(x) % m_count, row, m_seed) & 0xffffff);
        const float dx = fraction(x) - 0.5f + 0.16f * m_slub * (Noise::random(id, 5, m_seed) - 0.5f);
        const float dy = fraction(y) - 0.5f + 0.16f * m_slub * (Noise::random(id, 6, m_seed) - 0.5f);
        const float dome = std::sqrt(std::max(0.0f, 1 - (dx * dx * 3.2f + dy * dy * 4.4f)));
        const float twist = std::sin((dx * 1.5f + dy) * 22);
        const float fuzz = Noise::fbm(u, v, 120, 120, 2, m_seed + 7);
        return {yarn(id, 1) * ((0.42f + 0.60f * dome) * (1 + 0.06f * twist + 0.10f * fuzz)),
                m_depth * dome + 0.4f * twist + 0.6f * fuzz};
    }

    /// Cut ends in tufts, brushed here and there to one side.
    Sample pile(float u, float v) const
    {
        const Noise::Cell tuft = Noise::cells(u, v, m_count, m_count, 1, m_seed);
        const float ends = Noise::fbm(u, v, 110, 110, 2, m_seed + 8);
        const float brushed = Noise::fbm(u, v, 2, 3, 4, m_seed + 9);
        const float dome = 1 - smooth(0.1f, 0.75f, tuft.nearest);
        return {yarn(int(tuft.id & 0xffffff), 1) * (0.66f + 0.30f * dome + 0.16f * ends + 0.16f * brushed),
                m_depth * dome + 1.2f * ends};
    }

    QString m_kind;
    std::uint32_t m_seed;
    std::vector<Rgb> m_colors;
    int m_count;
    float m_depth, m_slub;
    int m_under;
};

/// Pebbles between creases, with pores.
class Leather {
public:
    explicit Leather(const Parameters& p)
        : m_seed(std::uint32_t(p.whole("seed", 1))), m_color(p.color("color", "#6b4226")),
          m_count(p.whole("count", 44, 8, 160)), m_depth(p.number("depth", 5, 0, 60)),
          m_soft(p.number("soft", 0.5f, 0, 1))
    {
    }

    /// Skin folds along many small creases, of which only some are deep.
    Sample at(float u, float v) const
    {
        const float bend = 0.55f / float(m_count);
        const float bu = u + bend * Noise::fbm(u, v, m_count / 2, m_count / 2, 3, m_seed + 1);
        const float bv = v + bend * Noise::fbm(u, v, m_count / 2, m_count / 2, 3, m_seed + 2);
        const Noise::Cell coarse = Noise::cells(bu, bv, m_count, m_count, 1, m_seed + 3);
        const Noise::Cell fine = Noise::cells(bu, bv, m_count * 2, m_count * 2, 1, m_seed + 4);
        const float deep = smooth(-0.4f, 0.5f, Noise::fbm(u, v, 12, 12, 3, m_seed + 6));
        const float crease = (0.35f + 0.65f * deep) * (1 - smooth(0, 0.26f, coarse.edge));
        const float wrinkle = (0.75f - 0.5f * deep) * (1 - smooth(0, 0.22f, fine.edge));
        const float pebble = 1 - std::max(crease, 0.7f * wrinkle);
        const float pore =
            smooth(0.16f, 0.05f, fine.nearest) * smooth(0.1f, 0.4f, Noise::perlin(u, v, 60, 60, m_seed + 7));
        const float clouds = Noise::fbm(u, v, 3, 3, 5, m_seed + 5);
        const float light = 0.80f + 0.20f * pebble * pebble + 0.16f * clouds * m_soft - 0.16f * pore -
                            0.10f * (coarse.dy + 0.5f * coarse.dx);
        return {m_color * light, m_depth * pebble - 0.8f * pore};
    }

private:
    std::uint32_t m_seed;
    Rgb m_color;
    int m_count;
    float m_depth, m_soft;
};

template <typename Family>
Picture draw(const Parameters& parameters, int size)
{
    const Family family(parameters);
    Picture picture(size);
    picture.fill([&](float u, float v) { return family.at(u, v); });
    return picture;
}

}  // namespace

Picture drawTextile(const Parameters& parameters, int size)
{
    return draw<Textile>(parameters, size);
}

Picture drawLeather(const Parameters& parameters, int size)
{
    return draw<Leather>(parameters, size);
}
