#include "Families.h"
#include "Noise.h"

#include <algorithm>

namespace {

class Metal {
public:
    explicit Metal(const Parameters& p)
        : m_kind(p.text("kind", "brushed")), m_seed(std::uint32_t(p.whole("seed", 1))),
          m_colors(p.colors("colors", {"#b9bcc0", "#8e9297"})), m_strength(p.number("strength", 1, 0, 4))
    {
        static const QStringList kinds{"brushed", "rust", "patina", "spangle"};
        if (!kinds.contains(m_kind))
            throw RecipeError("\"kind\" is none of " + kinds.join(QStringLiteral(", ")).toStdString());
        if (m_colors.size() < 2)
            throw RecipeError("\"colors\" needs at least two");
    }

    Sample at(float u, float v) const
    {
        if (m_kind == QLatin1String("rust"))
            return rust(u, v);
        if (m_kind == QLatin1String("patina"))
            return patina(u, v);
        return m_kind == QLatin1String("spangle") ? spangle(u, v) : brushed(u, v);
    }

private:
    Sample brushed(float u, float v) const
    {
        const float hair =
            0.55f * Noise::perlin(u, v, 3, 256, m_seed + 1) + 0.45f * Noise::perlin(u, v, 7, 200, m_seed + 2);
        const float scratch = smooth(0.55f, 0.8f, Noise::perlin(u, v, 4, 240, m_seed + 3));
        const float sheen = Noise::fbm(u, v, 2, 5, 3, m_seed + 4);
        const float t = clamp01(0.5f + m_strength * (0.42f * hair + 0.18f * sheen) - 0.3f * scratch);
        return {mix(m_colors[1], m_colors[0], t), 0.5f * hair - 0.5f * scratch};
    }

    /// Blotches within blotches, and what the rain washed down.
    Sample rust(float u, float v) const
    {
        const float bu = u + 0.035f * Noise::fbm(u, v, 5, 5, 4, m_seed + 1);
        const float bv = v + 0.035f * Noise::fbm(u, v, 5, 5, 4, m_seed + 6);
        const float blotch = Noise::fbm(bu, bv, 4, 3, 6, m_seed + 2);
        const float mottle = Noise::fbm(bu, bv, 24, 22, 4, m_seed + 7);
        const float runs = Noise::fbm(bu, v, 30, 2, 3, m_seed + 3);
        const float grain = Noise::fbm(u, v, 120, 120, 2, m_seed + 4);
        const float flakes = smooth(0.22f, 0.5f, Noise::fbm(bu, bv, 40, 40, 3, m_seed + 5));
        const float t = clamp01(0.5f + m_strength * (0.42f * blotch + 0.32f * mottle + 0.16f * runs));
        return {ramp(t) * (1 + 0.18f * grain - 0.16f * flakes), 0.9f * grain + 1.2f * mottle - 0.8f * flakes};
    }

    /// The metal's own colour last in the list, the patina's before it; runs point downwards.
    Sample patina(float u, float v) const
    {
        const float bu = u + 0.012f * Noise::fbm(u, v, 9, 5, 3, m_seed + 1);
        const float runs = Noise::fbm(bu, v, 34, 1, 3, m_seed + 2) + 0.6f * Noise::fbm(bu, v, 90, 2, 2, m_seed + 7);
        const float blotch = Noise::fbm(bu, v, 4, 4, 6, m_seed + 3);
        const float powder = Noise::fbm(u, v, 60, 60, 4, m_seed + 4);
        const float bare = m_strength * smooth(0.25f, 0.85f, 0.55f * runs + 0.75f * blotch + 0.25f * powder);
        const float shade = clamp01(0.5f + 0.55f * Noise::fbm(u, v, 6, 4, 5, m_seed + 5) + 0.40f * runs);
        const Rgb green = mix(m_colors[0], m_colors[1], shade) * (1 + 0.13f * powder);
        return {mix(green, m_colors.back() * (1 + 0.1f * powder), bare), 0.9f * powder - 1.5f * bare};
    }

    /// Zinc crystals, each mirroring the light its own way, with feathers inside.
    Sample spangle(float u, float v) const
    {
        const float bu = u + 0.02f * Noise::fbm(u, v, 14, 14, 3, m_seed + 1);
        const float bv = v + 0.02f * Noise::fbm(u, v, 14, 14, 3, m_seed + 2);
        const Noise::Cell cell = Noise::cells(bu, bv, 13, 13, 1, m_seed + 3);
        const int id = int(cell.id & 0xffffff);
        const float angle = 6.2832f * Noise::random(id, 1, m_seed);
        const float feather = std::sin((cell.dx * std::cos(angle) + cell.dy * std::sin(angle)) * 26 +
                                       3 * Noise::fbm(u, v, 30, 30, 2, m_seed + 4));
        const float t = clamp01(Noise::random(id, 2, m_seed) + 0.10f * m_strength * feather -
                                0.15f * (1 - smooth(0, 0.08f, cell.edge)));
        return {mix(m_colors[1], m_colors[0], t), 0};
    }

    Rgb ramp(float t) const
    {
        const float place = t * float(m_colors.size() - 1);
        const size_t first = std::min(size_t(place), m_colors.size() - 2);
        return mix(m_colors[first], m_colors[first + 1], place - float(first));
    }

    QString m_kind;
    std::uint32_t m_seed;
    std::vector<Rgb> m_colors;
    float m_strength;
};

}  // namespace

Picture drawMetal(const Parameters& parameters, int size)
{
    const Metal metal(parameters);
    Picture picture(size);
    picture.fill([&](float u, float v) { return metal.at(u, v); });
    return picture;
}
