#include "Families.h"
#include "Noise.h"

#include <algorithm>

namespace {

class Glass {
public:
    explicit Glass(const Parameters& p)
        : m_kind(p.text("kind", "frosted")), m_seed(std::uint32_t(p.whole("seed", 1))),
          m_color(p.color("color", "#dfe9e6")), m_line(p.color("line", "#4f5557")), m_count(p.whole("count", 8, 1, 64)),
          m_depth(p.number("depth", 3, 0, 40))
    {
        static const QStringList kinds{"frosted", "wired", "ripple"};
        if (!kinds.contains(m_kind))
            throw RecipeError("\"kind\" is none of " + kinds.join(QStringLiteral(", ")).toStdString());
    }

    Sample at(float u, float v) const
    {
        if (m_kind == QLatin1String("wired"))
            return wired(u, v);
        if (m_kind == QLatin1String("ripple"))
            return ripple(u, v);
        const float grain = Noise::fbm(u, v, 80, 80, 3, m_seed + 1);
        const float clouds = Noise::fbm(u, v, 4, 4, 3, m_seed + 2);
        return {m_color * (1 + 0.07f * grain + 0.02f * clouds), m_depth * grain};
    }

private:
    Sample wired(float u, float v) const
    {
        const float bend = 0.02f * Noise::perlin(u, v, m_count, m_count, m_seed + 1);
        const float dx = std::abs(fraction(u * float(m_count) + bend) - 0.5f),
                    dy = std::abs(fraction(v * float(m_count) - bend) - 0.5f);
        const float wire = std::max(smooth(0.022f, 0.010f, dx), smooth(0.022f, 0.010f, dy));
        const float ripple = 0.03f * Noise::fbm(u, v, 10, 10, 3, m_seed + 2);
        return {mix(m_color * (1 + ripple), m_line, wire), m_depth * ripple};
    }

    Sample ripple(float u, float v) const
    {
        const float bent = u + 0.02f * Noise::fbm(u, v, 4, 8, 2, m_seed + 1);
        const float wave = std::sin(6.2832f * (bent * float(m_count)) + 2.2f * Noise::fbm(u, v, 6, 10, 2, m_seed + 2));
        return {m_color * (0.90f + 0.10f * wave), m_depth * wave};
    }

    QString m_kind;
    std::uint32_t m_seed;
    Rgb m_color, m_line;
    int m_count;
    float m_depth;
};

/// Grids whose cells have a known size: "fine" lines between "count" strong ones, or a checkerboard.
class Measure {
public:
    explicit Measure(const Parameters& p)
        : m_checker(p.flag("checker", false)), m_colors(p.colors("colors", {"#f4f4f0", "#2f6f9f"})),
          m_count(p.whole("count", 1, 1, 64)), m_fine(p.whole("fine", 10, 1, 64))
    {
        if (m_colors.size() < 2)
            throw RecipeError("\"colors\" needs at least two");
    }

    Sample at(float u, float v) const
    {
        if (m_checker) {
            const bool dark = (int(u * float(m_count)) + int(v * float(m_count))) % 2;
            return {m_colors[dark ? 1 : 0], 0};
        }
        const float fine = line(u, v, m_count * m_fine, 0.0016f);
        const float middle = m_fine % 2 ? 0 : line(u, v, m_count * 2, 0.0028f);
        const float strong = line(u, v, m_count, 0.0060f);
        const float ink = std::max(strong, std::max(0.45f * fine, 0.75f * middle));
        return {mix(m_colors[0], m_colors[1], ink), 0};
    }

private:
    static float line(float u, float v, int count, float half)
    {
        const auto distance = [count](float x) {
            const float f = fraction(x * float(count));
            return std::min(f, 1 - f) / float(count);
        };
        return smooth(half + 0.0012f, half - 0.0004f, std::min(distance(u), distance(v)));
    }

    bool m_checker;
    std::vector<Rgb> m_colors;
    int m_count, m_fine;
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

Picture drawGlass(const Parameters& parameters, int size)
{
    return draw<Glass>(parameters, size);
}

Picture drawMeasure(const Parameters& parameters, int size)
{
    return draw<Measure>(parameters, size);
}
