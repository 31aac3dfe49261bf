#include "Families.h"
#include "Noise.h"

#include <algorithm>

namespace {

/// Pieces of one or two sizes that lie in, or stand out of, a binder.
class Aggregate {
public:
    explicit Aggregate(const Parameters& p)
        : m_seed(std::uint32_t(p.whole("seed", 1))), m_colors(p.colors("colors", {"#8f8a82", "#a7a097", "#6f6a63"})),
          m_binder(p.color("binder", "#77726a")), m_count(p.whole("count", 24, 2, 200)),
          m_fill(p.number("fill", 0.7f, 0, 1)), m_gap(p.number("gap", 0.08f, 0, 0.5f)),
          m_round(p.number("round", 0.5f, 0, 1)), m_depth(p.number("depth", 6, 0, 60)),
          m_rough(p.number("rough", 0.2f, 0, 1)), m_irregular(p.number("irregular", 0.3f, 0, 1)),
          m_jitter(p.number("jitter", 0.9f, 0, 1)), m_shade(p.number("shade", 0.5f, 0, 1)),
          m_fines(p.number("fines", 0.5f, 0, 1)), m_stretch(p.whole("stretch", 1, 1, 8)),
          m_pebble(p.number("pebble", 0, 0, 1)), m_light(p.number("light", 0.2f, 0, 1)),
          m_tone(p.number("tone", 0.1f, 0, 1))
    {
    }

    Sample at(float u, float v) const
    {
        const Sample ground = binder(u, v);
        const Sample small = pieces(ground, u, v, m_count * 5 / 2, m_fines, m_seed + 20);
        return pieces(small, u, v, m_count, m_fill, m_seed + 40);
    }

private:
    Sample binder(float u, float v) const
    {
        const float grain = Noise::fbm(u, v, 120, 120, 2, m_seed + 1);
        const float clods = Noise::fbm(u, v, 12, 12, 4, m_seed + 2);
        return {m_binder * (1 + 0.22f * m_rough * grain * 2 + 0.18f * clods * (0.3f + m_rough)),
                m_depth * m_rough * (0.25f * grain + 0.4f * clods)};
    }

    Sample pieces(const Sample& below, float u, float v, int count, float fill, std::uint32_t seed) const
    {
        if (fill <= 0)
            return below;
        const float bend = m_irregular * 0.35f / float(count);
        const float bu = u + bend * Noise::fbm(u, v, count * 2, count * 2, 2, seed + 1);
        const float bv = v + bend * Noise::fbm(u, v, count * 2, count * 2, 2, seed + 2);
        const Noise::Cell cell = Noise::cells(bu, bv, count, count * m_stretch, m_jitter, seed);
        const int id = int(cell.id & 0xffffff);
        if (Noise::random(id, 1, seed) > fill)
            return below;
        const float border = borderOf(cell, id, seed);
        const float inside = smooth(0, 0.05f, border);
        const float dome = mix(1, smooth(0, 0.32f, border), m_round);
        // A little light from the upper left; the pictures are seen flat in lists and small views.
        const float lit = 1 - m_light * m_round * (0.5f * cell.dx + 0.9f * cell.dy);
        const Rgb top = face(u, v, id, seed, dome) * lit;
        return {mix(below.color * (1 - m_shade * 0.7f * smooth(-0.14f, 0, border)), top, inside),
                mix(below.height, top.g * m_rough + m_depth * dome, inside)};
    }

    /// Inwards from the piece's border, in cell widths: the cell's own corners, ground round as far as asked.
    float borderOf(const Noise::Cell& cell, int id, std::uint32_t seed) const
    {
        const float straight = cell.edge - m_gap * (0.5f + Noise::random(id, 2, seed));
        const float round = 0.56f - 0.1f * Noise::random(id, 6, seed) - m_gap - cell.nearest;
        const float blend = clamp01(0.5f + (round - straight) / 0.3f);
        const float softest = mix(round, straight, blend) - 0.15f * blend * (1 - blend);
        return mix(straight, softest, m_pebble);
    }

    Rgb face(float u, float v, int id, std::uint32_t seed, float dome) const
    {
        const float pick = Noise::random(id, 3, seed) * float(m_colors.size());
        const Rgb base = m_colors[std::min(size_t(pick), m_colors.size() - 1)];
        const float grain = Noise::fbm(u, v, 100, 100, 2, seed + 5);
        const float tone = 1 + m_tone * (2 * Noise::random(id, 4, seed) - 1);
        return base * (tone * (1 + 0.35f * m_rough * grain) * (1 - m_shade * 0.55f * (1 - dome)));
    }

    std::uint32_t m_seed;
    std::vector<Rgb> m_colors;
    Rgb m_binder;
    int m_count;
    float m_fill, m_gap, m_round, m_depth, m_rough, m_irregular, m_jitter, m_shade, m_fines;
    int m_stretch;
    float m_pebble, m_light, m_tone;
};

}  // namespace

Picture drawAggregate(const Parameters& parameters, int size)
{
    const Aggregate aggregate(parameters);
    Picture picture(size);
    picture.fill([&](float u, float v) { return aggregate.at(u, v); });
    return picture;
}
