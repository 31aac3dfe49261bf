#include "Families.h"
#include "Noise.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

QColor toQColor(const Rgb& c)
{
    return QColor::fromRgbF(double(clamp01(c.r)), double(clamp01(c.g)), double(clamp01(c.b)));
}

/// Long pieces laid over one another at random: blades of grass, straw, strands of wood, bark. Painted from the lowest
/// to the highest, each again beyond every edge that it crosses.
class Strokes {
public:
    explicit Strokes(const Parameters& p)
        : m_seed(std::uint32_t(p.whole("seed", 1))), m_ground(p.color("ground", "#3b3a22")),
          m_colors(p.colors("colors", {"#4f6b2b", "#6b8538"})), m_count(p.whole("count", 9000, 10, 40000)),
          m_length(p.number("length", 0.07f, 0.004f, 0.6f)), m_width(p.number("width", 0.006f, 0.0008f, 0.2f)),
          m_angle(p.number("angle", 90, -180, 180)), m_spread(p.number("spread", 180, 0, 180)),
          m_bend(p.number("bend", 0.4f, 0, 2)), m_taper(p.flag("taper", true)), m_rows(p.whole("rows", 1, 1, 64)),
          m_rowShare(p.number("rowShare", 1, 0.02f, 1)), m_depth(p.number("depth", 8, 0, 60)),
          m_shade(p.number("shade", 0.55f, 0, 1)), m_flowers(p.whole("flowers", 0, 0, 2000)),
          m_flowerColors(p.colors("flowerColors", {"#e8d94a", "#f3f1ea", "#b65fa8"})),
          m_rough(p.number("rough", 0.5f, 0, 2)), m_patches(p.number("patches", 0.1f, 0, 1)),
          m_fibres(p.whole("fibres", 0, 0, 8))
    {
    }

    Picture draw(int size) const
    {
        QImage color = groundImage(size);
        QImage height(size, size, QImage::Format_RGB32);
        height.fill(Qt::black);
        QPainter colorPainter(&color), heightPainter(&height);
        for (QPainter* painter : {&colorPainter, &heightPainter}) {
            painter->setRenderHint(QPainter::Antialiasing);
            painter->setPen(Qt::NoPen);
        }
        for (int i = 0; i < m_count; ++i)
            stroke(i, size, colorPainter, heightPainter);
        for (int i = 0; i < m_flowers; ++i)
            flower(i, size, colorPainter);
        colorPainter.end();
        heightPainter.end();
        return toPicture(color, height, size);
    }

private:
    float random(int i, int salt) const { return Noise::random(i, salt, m_seed); }

    QImage groundImage(int size) const
    {
        Picture ground(size);
        ground.fill([this](float u, float v) {
            const float clods =
                Noise::fbm(u, v, 14, 14, 4, m_seed + 1) + 0.6f * Noise::fbm(u, v, 90, 90, 2, m_seed + 2);
            return Sample{m_ground * (1 + 0.3f * m_rough * clods), 0};
        });
        return ground.color().convertToFormat(QImage::Format_RGB32);
    }

    QPainterPath blade(int i, int size) const
    {
        const double length = double(m_length * (0.6f + 0.8f * random(i, 3))) * size;
        const double width = double(m_width * (0.7f + 0.6f * random(i, 4))) * size;
        const double bend = double(m_bend * (random(i, 5) - 0.5f)) * length;
        QPainterPath path;
        if (!m_taper) {
            path.addRect(-length / 2, -width / 2, length, width);
            return path;
        }
        path.moveTo(-length / 2, -width / 2);
        path.quadTo(0, bend - width / 2, length / 2, 0);
        path.quadTo(0, bend + width / 2, -length / 2, width / 2);
        path.closeSubpath();
        return path;
    }

    void stroke(int i, int size, QPainter& color, QPainter& height) const
    {
        const float rank = float(i) / float(m_count);
        const float x = random(i, 1);
        const float row = std::floor(random(i, 7) * float(m_rows));
        const float y = (row + 0.5f + (random(i, 2) - 0.5f) * m_rowShare) / float(m_rows);
        const double angle = double(m_angle + m_spread * 2 * (random(i, 6) - 0.5f));
        color.setBrush(toQColor(toneOf(i, rank, x, y)));
        const int level = int(40 + 215 * rank);
        height.setBrush(QColor(level, level, level));
        const QPainterPath path = blade(i, size);
        for (QPainter* painter : {&color, &height})
            around(*painter, QPointF(double(x) * size, double(y) * size), size, double(m_length) * size, [&] {
                painter->rotate(angle);
                painter->drawPath(path);
                if (painter == &color)
                    drawFibres(i, size, path.boundingRect(), color);
            });
    }

    /// What lies deeper is darker.
    Rgb toneOf(int i, float rank, float x, float y) const
    {
        const float pick = random(i, 8) * float(m_colors.size());
        const float patch = 1 + m_patches * Noise::fbm(x, y, 4, 4, 3, m_seed + 3);
        const float light = (1 - m_shade * (1 - rank)) * (0.88f + 0.24f * random(i, 9)) * patch;
        return m_colors[std::min(size_t(pick), m_colors.size() - 1)] * light;
    }

    void drawFibres(int i, int size, const QRectF& box, QPainter& color) const
    {
        for (int line = 0; line < m_fibres; ++line) {
            color.setBrush(random(i, 30 + line) < 0.6f ? QColor(50, 25, 0, 40) : QColor(255, 240, 210, 40));
            const double y = box.top() + box.height() * double(random(i, 40 + line));
            const double left = box.left() + box.width() * 0.4 * double(random(i, 50 + line));
            color.drawRect(
                QRectF(left, y, (box.right() - left) * double(0.5f + 0.5f * random(i, 60 + line)), 0.0022 * size));
        }
    }

    void flower(int i, int size, QPainter& color) const
    {
        const QPointF centre(double(random(i, 21)) * size, double(random(i, 22)) * size);
        const double radius = (0.004 + 0.004 * double(random(i, 23))) * size;
        const Rgb& petal =
            m_flowerColors[std::min(size_t(random(i, 24) * float(m_flowerColors.size())), m_flowerColors.size() - 1)];
        around(color, centre, size, radius * 2, [&] {
            color.setBrush(toQColor(petal * (0.85f + 0.15f * random(i, 25))));
            for (int leaf = 0; leaf < 5; ++leaf) {
                color.rotate(72);
                color.drawEllipse(QPointF(radius * 0.7, 0), radius * 0.62, radius * 0.48);
            }
            color.setBrush(QColor(0xc9, 0x97, 0x1c));
            color.drawEllipse(QPointF(0, 0), radius * 0.36, radius * 0.36);
        });
    }

    /// Draws at the point, and once more for every edge within reach.
    template <typename Draw>
    static void around(QPainter& painter, const QPointF& point, int size, double reach, const Draw& draw)
    {
        for (const double dx : {-1.0, 0.0, 1.0}) {
            for (const double dy : {-1.0, 0.0, 1.0}) {
                const QPointF place = point + QPointF(dx, dy) * size;
                if (place.x() < -reach || place.y() < -reach || place.x() > size + reach || place.y() > size + reach)
                    continue;
                painter.save();
                painter.translate(place);
                draw();
                painter.restore();
            }
        }
    }

    Picture toPicture(const QImage& color, const QImage& height, int size) const
    {
        Picture picture(size);
        for (int y = 0; y < size; ++y) {
            for (int x = 0; x < size; ++x) {
                const QRgb c = color.pixel(x, y);
                const size_t i = picture.index(x, y);
                picture.colors[i] = {float(qRed(c)) / 255, float(qGreen(c)) / 255, float(qBlue(c)) / 255};
                picture.heights[i] = m_depth * float(qRed(height.pixel(x, y))) / 255;
            }
        }
        return picture;
    }

    std::uint32_t m_seed;
    Rgb m_ground;
    std::vector<Rgb> m_colors;
    int m_count;
    float m_length, m_width, m_angle, m_spread, m_bend;
    bool m_taper;
    int m_rows;
    float m_rowShare, m_depth, m_shade;
    int m_flowers;
    std::vector<Rgb> m_flowerColors;
    float m_rough, m_patches;
    int m_fibres;
};

}  // namespace

Picture drawStrokes(const Parameters& parameters, int size)
{
    return Strokes(parameters).draw(size);
}
