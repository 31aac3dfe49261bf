#include "Families.h"
#include "Noise.h"
#include "Surface.h"

#include <algorithm>

namespace {

class Masonry {
public:
    explicit Masonry(const Parameters& parameters)
        : m_seed(std::uint32_t(parameters.whole("seed", 1))), m_surface(parameters, m_seed),
          m_joint(parameters.number("joint", 0.012f, 0, 0.2f)),
          m_bevel(parameters.number("bevel", 0.006f, 0.0005f, 0.1f)),
          m_wobble(parameters.number("wobble", 0.15f, 0, 2)), m_mortar(parameters.color("mortar", "#b9b0a2")),
          m_depth(parameters.number("depth", 6, 0, 60)), m_tilt(parameters.number("tilt", 0, 0, 8)),
          m_dirt(parameters.number("dirt", 0.3f, 0, 1)), m_ragged(parameters.number("ragged", 0, 0, 2)),
          m_relief(parameters.number("relief", 0.5f, 0, 2)), m_lapped(parameters.flag("lapped", false))
    {
        m_layout.bond = parameters.text("bond", "running");
        m_layout.columns = parameters.whole("columns", 4, 1, 64);
        m_layout.rows = parameters.whole("rows", 8, 1, 64);
        m_layout.seed = m_seed;
        if (!Layout::isKnown(m_layout.bond))
            throw RecipeError("\"bond\" is none that is known");
    }

    Sample at(float u, float v) const
    {
        // Edges are not drawn with a ruler.
        const float wobble = m_wobble * 0.01f;
        const float ragged = m_ragged * 0.01f;
        const float wu =
            u + wobble * Noise::fbm(u, v, 18, 18, 3, m_seed + 1) + ragged * Noise::fbm(u, v, 48, 48, 3, m_seed + 7);
        const float wv =
            v + wobble * Noise::fbm(u, v, 18, 18, 3, m_seed + 2) + ragged * Noise::fbm(u, v, 48, 48, 3, m_seed + 8);
        const Block block = blockAt(m_layout, fraction(wu), fraction(wv));
        return m_lapped ? lapped(u, v, block) : jointed(u, v, block);
    }

private:
    Sample jointed(float u, float v, const Block& block) const
    {
        const Sample face = m_surface.at(u, v, block);
        const float inside = smooth(m_joint / 2, m_joint / 2 + m_bevel, block.edge);
        const float grain = Noise::fbm(u, v, 110, 110, 2, m_seed + 3);
        const float sand = 1 + 0.14f * grain + 0.08f * Noise::fbm(u, v, 7, 7, 3, m_seed + 4) - m_dirt * 0.25f;
        const Rgb mortar = m_mortar * (sand * (1 - 0.45f * m_relief * underside(block)));
        const float lean =
            m_tilt * (Noise::random(int(block.id & 0xffff), 5, m_seed) - 0.5f) * (block.along - 0.5f) * 2;
        const float rim = 1 - m_dirt * 0.35f * (1 - smooth(m_joint / 2, m_joint / 2 + 4 * m_bevel, block.edge));
        return {mix(mortar, face.color * (rim * arris(block)), inside),
                mix(0.8f * grain - m_depth, face.height + lean, inside)};
    }

    /// 1 in the joint right under a block, fading downwards.
    float underside(const Block& block) const
    {
        const float edge = m_joint / 2 + m_bevel;
        return smooth(0, edge, block.bottom) * (1 - smooth(edge, edge + m_bevel, block.bottom));
    }

    /// Edges that look up catch the light, those that look down lie in shade.
    float arris(const Block& block) const
    {
        const float top = (block.upright ? block.length : block.width) - block.bottom;
        const float from = m_joint / 2 + m_bevel / 2, to = from + 2 * m_bevel;
        return 1 + m_relief * (0.12f * (1 - smooth(from, to, top)) - 0.24f * (1 - smooth(from, to, block.bottom)));
    }

    /// Every course lies on the one below and throws its shadow there; its own lower edge is its thickest place.
    Sample lapped(float u, float v, const Block& block) const
    {
        const Sample face = m_surface.at(u, v, block);
        const float courseHeight = 1.0f / float(m_layout.rows);
        const float fromTop = clamp01(1 - block.bottom / courseHeight);
        const float sideGap =
            m_joint > 0 ? smooth(0, m_joint, std::min(block.along, 1 - block.along) / float(m_layout.columns)) : 1;
        const float shadow = 1 - 0.5f * (1 - smooth(0, 0.16f, fromTop));
        const float edgeLight = 1 + 0.16f * smooth(0.90f, 0.955f, fromTop) - 0.45f * smooth(0.965f, 0.995f, fromTop);
        const float streaks = 1 - m_dirt * 0.25f * clamp01(Noise::fbm(u, v, 24, 3, 3, m_seed + 6));
        return {face.color * (shadow * edgeLight * streaks * (0.45f + 0.55f * sideGap)),
                face.height * 0.6f + m_depth * fromTop * (0.4f + 0.6f * sideGap)};
    }

    std::uint32_t m_seed;
    Surface m_surface;
    Layout m_layout;
    float m_joint, m_bevel, m_wobble;
    Rgb m_mortar;
    float m_depth, m_tilt, m_dirt, m_ragged, m_relief;
    bool m_lapped;
};

}  // namespace

Picture drawMasonry(const Parameters& parameters, int size)
{
    const Masonry masonry(parameters);
    Picture picture(size);
    picture.fill([&](float u, float v) { return masonry.at(u, v); });
    return picture;
}

Picture drawSurface(const Parameters& parameters, int size)
{
    const Surface surface(parameters, std::uint32_t(parameters.whole("seed", 1)));
    Picture picture(size);
    picture.fill([&](float u, float v) { return surface.at(u, v, Block{}); });
    return picture;
}
