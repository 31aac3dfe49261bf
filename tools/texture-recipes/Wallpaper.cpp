#include "Families.h"
#include "Noise.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace {

class Wallpaper {
public:
    explicit Wallpaper(const Parameters& p)
        : m_kind(p.text("kind", "stripes")), m_seed(std::uint32_t(p.whole("seed", 1))),
          m_colors(p.colors("colors", {"#e9e4d6", "#8fa98f"})), m_count(p.whole("count", 6, 1, 64)),
          m_depth(p.number("depth", 3, 0, 40))
    {
        static const QStringList kinds{"stripes", "damask", "dots", "woodchip", "linen"};
        if (!kinds.contains(m_kind))
            throw RecipeError("\"kind\" is none of " + kinds.join(QStringLiteral(", ")).toStdString());
        if (m_colors.size() < 2)
            throw RecipeError("\"colors\" needs at least two");
    }

    Picture draw(int size) const
    {
        Picture picture(size);
        const QImage ornament = m_kind == QLatin1String("damask") ? damask(size) : QImage();
        picture.fill([&](float u, float v) {
            const float print = ornament.isNull()
                                    ? 0
                                    : float(qGray(ornament.pixel(std::min(int(u * float(size)), size - 1),
                                                                 std::min(int(v * float(size)), size - 1)))) /
                                          255;
            return at(u, v, print);
        });
        return picture;
    }

private:
    Sample at(float u, float v, float print) const
    {
        const float paper = Noise::fbm(u, v, 90, 90, 2, m_seed + 1);
        if (m_kind == QLatin1String("woodchip"))
            return woodchip(u, v, paper);
        if (m_kind == QLatin1String("linen"))
            return linen(u, v, paper);
        if (m_kind == QLatin1String("dots"))
            print = dots(u, v);
        else if (m_kind == QLatin1String("stripes"))
            return stripes(u, paper);
        const float sheen = 1 + 0.06f * std::sin(v * 6.2832f * 64) * print;
        return {mix(m_colors[0], m_colors[1], print) * (1 + 0.03f * paper) * sheen, m_depth * print + 0.2f * paper};
    }

    /// A broad stripe with a fine line to either side.
    Sample stripes(float u, float paper) const
    {
        const float x = std::abs(fraction(u * float(m_count)) - 0.5f);
        const float broad = smooth(0.252f, 0.245f, x);
        const float line = smooth(0.300f, 0.296f, x) * smooth(0.282f, 0.286f, x);
        const Rgb ground = mix(m_colors[0], m_colors[1], broad);
        return {mix(ground, m_colors.back(), line) * (1 + 0.03f * paper), 0.2f * paper};
    }

    float dots(float u, float v) const
    {
        const float y = v * float(m_count) * 2;
        const float dx = fraction(u * float(m_count) + (int(y) % 2 ? 0.5f : 0)) - 0.5f, dy = (fraction(y) - 0.5f) / 2;
        return smooth(0.115f, 0.10f, std::sqrt(dx * dx + dy * dy));
    }

    Sample woodchip(float u, float v, float paper) const
    {
        const Noise::Cell chip = Noise::cells(u + 0.01f * Noise::fbm(u, v, 30, 30, 2, m_seed + 2), v, m_count * 6,
                                              m_count * 6, 1, m_seed + 3);
        const bool there = Noise::random(int(chip.id & 0xffffff), 1, m_seed) < 0.5f;
        const float bump = there ? smooth(0.40f, 0.06f, chip.nearest) : 0;
        const float slope = std::max(-1.0f, std::min(1.0f, -(chip.dy + 0.4f * chip.dx) * 4));
        const float light = 0.11f * bump * slope + 0.05f * paper;
        return {mix(m_colors[0], m_colors[1], 0.35f * (1 - bump)) * (1 + light), m_depth * bump + 0.4f * paper};
    }

    Sample linen(float u, float v, float paper) const
    {
        const float warp = Noise::perlin(u, v, 150, 5, m_seed + 4) + 0.5f * Noise::perlin(u, v, 240, 9, m_seed + 5);
        const float weft = Noise::perlin(u, v, 5, 150, m_seed + 6) + 0.5f * Noise::perlin(u, v, 9, 240, m_seed + 7);
        const float t = clamp01(0.5f + 0.40f * warp + 0.40f * weft);
        return {mix(m_colors[0], m_colors[1], t) * (1 + 0.03f * paper), m_depth * (warp + weft) * 0.4f};
    }

    /// A palmette between two leaves, mirrored, and again half a repeat further; garlands wind between them.
    static QImage damask(int size)
    {
        QImage image(size, size, QImage::Format_Grayscale8);
        image.fill(Qt::black);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::white);
        painter.scale(size, size);
        for (int garland = -1; garland <= 3; ++garland)
            drawGarland(painter, garland);
        for (const QPointF& centre :
             {QPointF(0.25, 0.25), QPointF(0.75, 0.75), QPointF(0.25, 1.25), QPointF(0.75, -0.25)}) {
            for (const double side : {-1.0, 1.0}) {
                painter.save();
                painter.translate(centre - QPointF(0, 0.03));
                painter.scale(side * 1.42, 1.42);
                painter.drawPath(halfOrnament());
                painter.restore();
            }
        }
        return image;
    }

    static QPointF onGarland(int garland, double v)
    {
        const double swing = (garland % 2 ? 0.16 : -0.16) * std::cos(6.283185307179586 * (v - 0.25));
        return {0.5 * garland + swing, v};
    }

    /// A stem that swings out round the ornaments to its left and right by turns, with leaves in pairs.
    static void drawGarland(QPainter& painter, int garland)
    {
        constexpr int Leaves = 22;
        QPainterPath stem(onGarland(garland, -0.1));
        for (int i = 1; i <= 120; ++i)
            stem.lineTo(onGarland(garland, -0.1 + 0.01 * i));
        painter.strokePath(stem, QPen(Qt::white, 0.008));
        for (int i = -1; i <= Leaves; ++i) {
            const QPointF foot = onGarland(garland, double(i) / Leaves);
            const QPointF next = onGarland(garland, double(i + 1) / Leaves) - foot;
            const double angle = 180 - std::atan2(next.x(), next.y()) * 57.29577951308232;
            painter.drawPath(leaf(foot.x(), foot.y(), angle + 48, 0.048, 0.013));
            painter.drawPath(leaf(foot.x(), foot.y(), angle - 48, 0.048, 0.013));
        }
    }

    static QPainterPath leaf(double x, double y, double angle, double length, double width)
    {
        QPainterPath path;
        path.moveTo(0, 0);
        path.cubicTo(width, -length * 0.25, width * 0.9, -length * 0.8, 0, -length);
        path.cubicTo(-width * 0.35, -length * 0.7, -width * 0.4, -length * 0.3, 0, 0);
        QTransform place;
        place.translate(x, y);
        place.rotate(angle);
        return place.map(path);
    }

    static QPainterPath halfOrnament()
    {
        QPainterPath path;
        path.setFillRule(Qt::WindingFill);
        path.addPath(leaf(0, 0.06, 0, 0.20, 0.030));
        for (int i = 0; i < 5; ++i)
            path.addPath(leaf(0.012 + 0.004 * i, 0.06, 24 + 25 * i, 0.175 - 0.022 * i, 0.030));
        path.addPath(leaf(0.004, 0.20, 52, 0.15, 0.028));
        path.addPath(leaf(0.004, 0.22, 96, 0.12, 0.024));
        path.addPath(leaf(0.15, 0.02, -12, 0.13, 0.022));
        path.addEllipse(QPointF(0.185, -0.14), 0.014, 0.014);
        path.addEllipse(QPointF(0.0, -0.175), 0.013, 0.018);
        path.addEllipse(QPointF(0.10, 0.17), 0.011, 0.011);
        path.addRect(QRectF(0, 0.05, 0.006, 0.19));
        return path;
    }

    QString m_kind;
    std::uint32_t m_seed;
    std::vector<Rgb> m_colors;
    int m_count;
    float m_depth;
};

}  // namespace

Picture drawWallpaper(const Parameters& parameters, int size)
{
    return Wallpaper(parameters).draw(size);
}
