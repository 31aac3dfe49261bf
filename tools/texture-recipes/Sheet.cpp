#include "Families.h"
#include "Noise.h"

#include <algorithm>

namespace {

constexpr float Pi = 3.14159265f;
constexpr float Joint = 0.74f;  ///< of pantiles, in the width of one

/// Regular relief over a plain colour; what is not metal (clay, mineral board) only has other colours.
class Sheet {
public:
    explicit Sheet(const Parameters& p)
        : m_kind(p.text("kind", "corrugated")), m_seed(std::uint32_t(p.whole("seed", 1))),
          m_colors(p.colors("colors", {"#9aa0a5"})), m_columns(p.whole("columns", 8, 1, 64)),
          m_rows(p.whole("rows", 8, 1, 64)), m_depth(p.number("depth", 12, 0, 100)),
          m_radius(p.number("radius", 0.3f, 0.02f, 0.5f)), m_wear(p.number("wear", 0.3f, 0, 1)),
          m_hole(p.color("hole", "#15171a"))
    {
        static const QStringList kinds{"corrugated", "seam", "pantile", "checker", "perforated", "boards"};
        if (!kinds.contains(m_kind))
            throw RecipeError("\"kind\" is none of " + kinds.join(QStringLiteral(", ")).toStdString());
    }

    Sample at(float u, float v) const
    {
        if (m_kind == QLatin1String("checker"))
            return checker(u, v);
        if (m_kind == QLatin1String("perforated"))
            return perforated(u, v);
        if (m_kind == QLatin1String("pantile"))
            return pantile(u, v);
        if (m_kind == QLatin1String("boards"))
            return boards(u, v);
        return m_kind == QLatin1String("seam") ? seam(u, v) : corrugated(u, v);
    }

private:
    Rgb face(float u, float v, int id) const
    {
        const float pick = Noise::random(id, 1, m_seed) * float(m_colors.size());
        const float clouds = Noise::fbm(u, v, 4, 4, 4, m_seed + 1);
        const float grain = Noise::fbm(u, v, 110, 110, 2, m_seed + 2);
        const float tone =
            1 + m_wear * (0.16f * clouds + 0.10f * grain + 0.18f * (Noise::random(id, 2, m_seed) - 0.5f));
        return m_colors[std::min(size_t(pick), m_colors.size() - 1)] * tone;
    }

    Sample corrugated(float u, float v) const
    {
        const float phase = 2 * Pi * u * float(m_columns);
        const float glint = smooth(0.86f, 1, std::cos(phase - 0.7f));
        const float light = 0.97f + 0.20f * std::cos(phase - 0.9f) + 0.10f * glint;
        const float streak = 1 - m_wear * 0.3f * clamp01(Noise::fbm(u, v, 40, 2, 3, m_seed + 5));
        return {face(u, v, 0) * (light * streak), m_depth * 0.5f * (1 - std::cos(phase))};
    }

    /// Flat bays between upright seams.
    Sample seam(float u, float v) const
    {
        const float x = u * float(m_columns);
        const int bay = int(std::floor(x));
        const float fromSeam = std::min(x - float(bay), float(bay + 1) - x);
        const float ridge = 1 - smooth(0.012f, 0.03f, fromSeam);
        const float side = fraction(x) < 0.5f ? 1.0f : 0.0f;
        const float shadow = side * (1 - smooth(0.03f, 0.10f, fromSeam));
        const float oil = Noise::fbm(u, v, 3 * m_columns, 3, 2, m_seed + 6);
        const Rgb color = face(u, v, bay) * (1 + 0.05f * oil - 0.42f * shadow * (1 - ridge) + 0.14f * ridge);
        return {color, m_depth * ridge + 0.8f * oil};
    }

    /// S-shaped tiles: a roll and a pan each, every course lapping the one below.
    Sample pantile(float u, float v) const
    {
        const float row = v * float(m_rows), column = u * float(m_columns);
        // A tile ends on the flank of its roll, not where the profile's period does.
        const int id = int(Noise::hash(int(column + 1 - Joint) % m_columns, int(row), m_seed) & 0xffff);
        const float x = fraction(column), y = fraction(row);
        const float profile = std::sin(2 * Pi * x);
        const float curve = 0.5f + 0.5f * profile;
        const float lip = smooth(0.93f, 0.97f, y) * (1 - smooth(0.985f, 1.0f, y));
        const float shadow = 1 - 0.62f * (1 - smooth(0, 0.06f + 0.12f * curve, y));
        const float light = 0.74f + 0.34f * curve + 0.16f * std::cos(2 * Pi * x - 0.4f) + 0.10f * lip;
        const float joint = 1 - 0.55f * (1 - smooth(0, 0.035f, std::abs(x - Joint)));
        const float moss = m_wear * smooth(0.3f, 0.7f, Noise::fbm(u, v, 5, 5, 4, m_seed + 7)) * (1 - curve);
        const Rgb clay = mix(face(u, v, id), Rgb{0.33f, 0.33f, 0.24f}, 0.5f * moss);
        return {clay * (shadow * light * joint), m_depth * curve + m_depth * 0.35f * y - 2 * (1 - joint)};
    }

    /// Raised lenses by turns at right angles.
    Sample checker(float u, float v) const
    {
        const float x = u * float(m_columns), y = v * float(m_rows);
        const int column = int(x), row = int(y);
        const bool turned = (column + row) % 2;
        const float dx = x - float(column) - 0.5f, dy = y - float(row) - 0.5f;
        const float along = (turned ? dx - dy : dx + dy) * 0.7071f, across = (turned ? dx + dy : dx - dy) * 0.7071f;
        const float half = std::max(0.0f, 0.17f * (1 - along * along / 0.23f));
        const float raised = half > 0 ? smooth(half, half * 0.55f, std::abs(across)) : 0;
        const float light = raised * (1 - raised) * 2.6f * (across < 0 ? 0.42f : -0.55f);
        const float scratch = smooth(0.5f, 0.8f, Noise::perlin(u, v, 40, 5, m_seed + 8));
        return {face(u, v, 0) * (1 + light + 0.16f * raised - 0.12f * m_wear * scratch), m_depth * raised};
    }

    /// Round holes, every other row shifted.
    Sample perforated(float u, float v) const
    {
        const float y = v * float(m_rows);
        const int row = int(y);
        const float dx = fraction(u * float(m_columns) + (row % 2 ? 0.5f : 0)) - 0.5f;
        const float dy = (y - float(row) - 0.5f) * float(m_columns) / float(m_rows);
        const float distance = std::sqrt(dx * dx + dy * dy);
        const float open = smooth(m_radius + 0.02f, m_radius - 0.02f, distance);
        const float rim = smooth(m_radius + 0.12f, m_radius, distance) * (1 - open);
        return {mix(face(u, v, 0) * (1 + rim * (dy < 0 ? -0.22f : 0.22f)), m_hole, open), -m_depth * open};
    }

    /// The print of shuttering boards in concrete: fins between them, their grain, the holes of ties.
    Sample boards(float u, float v) const
    {
        const float y = v * float(m_rows);
        const int board = int(y);
        const float fromEdge = std::min(fraction(y), 1 - fraction(y));
        const float ragged = 0.02f * Noise::perlin(u, v, 40, m_rows, m_seed + 11);
        const float fin = 1 - smooth(0.015f, 0.05f, fromEdge + ragged);
        const float x = fraction(u + Noise::random(board, 3, m_seed));
        const float bend = 0.02f * Noise::perlin(x, v, 2, 2 * m_rows, m_seed + 12);
        const float grain =
            Noise::perlin(x, v + bend, 4, 120, m_seed + 9) + 0.6f * Noise::perlin(x, v + bend, 8, 240, m_seed + 13);
        const float clouds = Noise::fbm(u, v, 3, 4, 5, m_seed + 14);
        const float bubble = smooth(0.50f, 0.72f, Noise::fbm(u, v, 70, 70, 2, m_seed + 10));
        const float step = 0.12f * (Noise::random(board, 4, m_seed) - 0.5f);
        const float light =
            1 + step + 0.07f * grain + 0.10f * clouds - 0.30f * bubble - fin * (fraction(y) < 0.5f ? 0.34f : -0.10f);
        return {face(u, v, board) * light, m_depth * 0.3f * grain + m_depth * fin + 20 * step - 2 * bubble};
    }

    QString m_kind;
    std::uint32_t m_seed;
    std::vector<Rgb> m_colors;
    int m_columns, m_rows;
    float m_depth, m_radius, m_wear;
    Rgb m_hole;
};

}  // namespace

Picture drawSheet(const Parameters& parameters, int size)
{
    const Sheet sheet(parameters);
    Picture picture(size);
    picture.fill([&](float u, float v) { return sheet.at(u, v); });
    return picture;
}
