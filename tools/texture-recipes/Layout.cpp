#include "Layout.h"

#include "Noise.h"
#include "Picture.h"

#include <algorithm>

namespace {

int wrapped(int value, int period)
{
    return ((value % period) + period) % period;
}

Block block(std::uint32_t id, float x, float y, float width, float height)
{
    Block b;
    b.id = id;
    b.upright = height > width;
    b.along = b.upright ? y / height : x / width;
    b.across = b.upright ? x / width : y / height;
    b.edge = std::min(std::min(x, width - x), std::min(y, height - y));
    b.bottom = height - y;
    b.length = std::max(width, height);
    b.width = std::min(width, height);
    return b;
}

/// A course of equal blocks, shifted by a share of a block.
Block inCourse(const Layout& layout, float u, float v, int blocks, float shift)
{
    const float height = 1.0f / float(layout.rows), width = 1.0f / float(blocks);
    const int row = std::min(int(v * float(layout.rows)), layout.rows - 1);
    const float x = u * float(blocks) + shift;
    const int column = int(std::floor(x));
    return block(Noise::hash(wrapped(column, blocks), row, layout.seed), (x - float(column)) * width,
                 v - float(row) * height, width, height);
}

/// Long and short blocks by turns, the short ones half as long.
Block flemish(const Layout& layout, float u, float v)
{
    const int row = std::min(int(v * float(layout.rows)), layout.rows - 1);
    const float unit = 1.0f / float(layout.columns), height = 1.0f / float(layout.rows);
    const float x = u * float(layout.columns) + (row % 2 ? 0.5f : 0.0f);
    const int pair = int(std::floor(x));
    const float inPair = (x - float(pair)) * unit;
    const float longer = unit * 2 / 3;
    const bool first = inPair < longer;
    const auto id = Noise::hash(wrapped(pair, layout.columns) * 2 + (first ? 0 : 1), row, layout.seed);
    return first ? block(id, inPair, v - float(row) * height, longer, height)
                 : block(id, inPair - longer, v - float(row) * height, unit - longer, height);
}

Block english(const Layout& layout, float u, float v)
{
    const int row = int(v * float(layout.rows));
    return row % 2 ? inCourse(layout, u, v, layout.columns * 2, 0.5f) : inCourse(layout, u, v, layout.columns, 0);
}

/// Two-to-one blocks at right angles, on a grid of half blocks.
Block herringbone(const Layout& layout, float u, float v)
{
    const int n = layout.columns * 4;
    const float cell = 1.0f / float(n);
    const int i = std::min(int(u * float(n)), n - 1), j = std::min(int(v * float(n)), n - 1);
    const float x = u - float(i) * cell, y = v - float(j) * cell;
    switch (wrapped(i - j, 4)) {
    case 0:
        return block(Noise::hash(i, j, layout.seed), x, y, 2 * cell, cell);
    case 1:
        return block(Noise::hash(wrapped(i - 1, n), j, layout.seed), x + cell, y, 2 * cell, cell);
    case 3:
        return block(Noise::hash(i, j, layout.seed + 7), x, y, cell, 2 * cell);
    default:
        return block(Noise::hash(i, wrapped(j - 1, n), layout.seed + 7), x, y + cell, cell, 2 * cell);
    }
}

/// Two colours by turns in both directions.
Block checker(const Layout& layout, float u, float v)
{
    Block b = inCourse(layout, u, v, layout.columns, 0);
    b.color = (int(u * float(layout.columns)) + int(v * float(layout.rows))) % 2;
    return b;
}

/// Courses of different heights with blocks of different lengths.
Block ashlar(const Layout& layout, float u, float v)
{
    float top = 0, total = 0;
    const auto weight = [&](int row) { return 0.6f + Noise::random(row, 5, layout.seed); };
    for (int row = 0; row < layout.rows; ++row)
        total += weight(row);
    int row = 0;
    while (row < layout.rows - 1 && v >= top + weight(row) / total)
        top += weight(row++) / total;
    const float height = weight(row) / total;
    const float x = fraction(u + Noise::random(row, 9, layout.seed)) * float(layout.columns);
    // Every joint moves by less than half a block to either side.
    const auto joint = [&](int column) {
        return float(column) + 0.7f * (Noise::random(wrapped(column, layout.columns), row, layout.seed) - 0.5f);
    };
    int column = int(std::floor(x));
    if (x < joint(column))
        --column;
    else if (x >= joint(column + 1))
        ++column;
    const float unit = 1.0f / float(layout.columns);
    return block(Noise::hash(wrapped(column, layout.columns), row, layout.seed + 3), (x - joint(column)) * unit,
                 v - top, (joint(column + 1) - joint(column)) * unit, height);
}

/// Every other course of hexagons is shifted by half of one. `along` and `across` run over the hexagon's box.
Block hexagon(const Layout& layout, float u, float v)
{
    const float width = 1.0f / float(layout.columns), height = 1.0f / float(layout.rows);
    Block best;
    float nearest = 10, second = 10;
    const int middle = int(std::floor(v * float(layout.rows)));
    for (int row = middle - 1; row <= middle + 2; ++row) {
        const float shift = wrapped(row, 2) ? 0.5f : 0.0f;
        for (int side = 0; side < 2; ++side) {
            const int column = int(std::floor(u * float(layout.columns) - shift)) + side;
            const float dx = u - (float(column) + shift) * width, dy = v - float(row) * height;
            const float distance = std::sqrt(dx * dx + dy * dy);
            second = std::min(second, std::max(distance, nearest));
            if (distance < nearest) {
                nearest = distance;
                best.id = Noise::hash(wrapped(column, layout.columns), wrapped(row, layout.rows), layout.seed);
                best.along = dx / width + 0.5f;
                best.across = dy / height + 0.5f;
                best.bottom = height / 2 - dy;
                best.length = width;
                best.width = height;
            }
        }
    }
    best.edge = (second - nearest) / 2;
    return best;
}

}  // namespace

bool Layout::isKnown(const QString& bond)
{
    static const QStringList bonds{"running",     "third",  "stack",  "flemish", "english",
                                   "herringbone", "ashlar", "planks", "hexagon", "checker"};
    return bonds.contains(bond);
}

Block blockAt(const Layout& layout, float u, float v)
{
    const int row = int(v * float(layout.rows));
    if (layout.bond == QLatin1String("stack"))
        return inCourse(layout, u, v, layout.columns, 0);
    if (layout.bond == QLatin1String("third"))
        return inCourse(layout, u, v, layout.columns, float(row % 3) / 3);
    if (layout.bond == QLatin1String("planks"))
        return inCourse(layout, u, v, layout.columns, Noise::random(row, 1, layout.seed));
    if (layout.bond == QLatin1String("flemish"))
        return flemish(layout, u, v);
    if (layout.bond == QLatin1String("english"))
        return english(layout, u, v);
    if (layout.bond == QLatin1String("herringbone"))
        return herringbone(layout, u, v);
    if (layout.bond == QLatin1String("hexagon"))
        return hexagon(layout, u, v);
    if (layout.bond == QLatin1String("checker"))
        return checker(layout, u, v);
    if (layout.bond == QLatin1String("ashlar"))
        return ashlar(layout, u, v);
    return inCourse(layout, u, v, layout.columns, row % 2 ? 0.5f : 0.0f);
}
