#include "ClosedSurface.h"

#include <kiv/VectorMath.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <numeric>
#include <tuple>
#include <unordered_map>

namespace kiv {

namespace {

// Of the extent. Seams of round bodies meet but for rounding.
constexpr double Weld = 1e-6;

using Place = std::array<std::int64_t, 3>;

/// The corners, those at the same place as one.
std::vector<unsigned> weld(const CPrimitiveRenderable& renderable, const CVec3<float>& low, const CVec3<float>& high)
{
    const double extent = std::max({double(high.x) - low.x, double(high.y) - low.y, double(high.z) - low.z, 1e-30});
    const auto steps = [&](float value, float from) { return std::llround((double(value) - from) / (extent * Weld)); };
    const std::vector<CVec3<float>>& vertices = renderable.GetVertexArray();
    std::vector<std::pair<Place, unsigned>> places;
    places.reserve(vertices.size());
    for (const CVec3<float>& vertex : vertices)
        places.push_back(
            {{steps(vertex.x, low.x), steps(vertex.y, low.y), steps(vertex.z, low.z)}, unsigned(places.size())});
    std::sort(places.begin(), places.end());
    std::vector<unsigned> welded(vertices.size());
    for (std::size_t i = 0; i < places.size(); ++i)
        welded[places[i].second] =
            i > 0 && places[i].first == places[i - 1].first ? welded[places[i - 1].second] : places[i].second;
    return welded;
}

/// Sets of corners that triangles connect.
class CPieces {
public:
    explicit CPieces(std::size_t count) : m_parents(count) { std::iota(m_parents.begin(), m_parents.end(), 0U); }

    unsigned Of(unsigned corner)
    {
        while (m_parents[corner] != corner)
            corner = m_parents[corner] = m_parents[m_parents[corner]];
        return corner;
    }

    void Join(unsigned a, unsigned b) { m_parents[Of(a)] = Of(b); }

private:
    std::vector<unsigned> m_parents;
};

using Triangles = std::vector<std::array<unsigned, 3>>;

Triangles trianglesOf(const CPrimitiveRenderable& renderable, const std::vector<unsigned>& welded)
{
    Triangles triangles;
    const std::vector<unsigned>& indices = renderable.GetIndexArray();
    triangles.reserve(indices.size() / 3);
    for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
        const std::array<unsigned, 3> corners = {welded[indices[i]], welded[indices[i + 1]], welded[indices[i + 2]]};
        // At the poles of a sphere there are triangles without an area.
        if (corners[0] != corners[1] && corners[1] != corners[2] && corners[2] != corners[0])
            triangles.push_back(corners);
    }
    return triangles;
}

/// Each edge must be passed in both directions equally often.
bool hasNoRim(const Triangles& triangles)
{
    std::unordered_map<std::uint64_t, int> balance;
    balance.reserve(triangles.size() * 2);
    for (const auto& corners : triangles) {
        for (std::size_t i = 0; i < 3; ++i) {
            const std::uint64_t from = corners[i];
            const std::uint64_t to = corners[(i + 1) % 3];
            balance[std::min(from, to) << 32 | std::max(from, to)] += from < to ? 1 : -1;
        }
    }
    return std::all_of(balance.begin(), balance.end(), [](const auto& edge) { return edge.second == 0; });
}

/// Each piece alone, since one that is inside out would vanish.
bool looksOutwards(const CPrimitiveRenderable& renderable, const Triangles& triangles, const CVec3<float>& origin)
{
    CPieces pieces(renderable.GetVertexArray().size());
    for (const auto& corners : triangles) {
        pieces.Join(corners[0], corners[1]);
        pieces.Join(corners[1], corners[2]);
    }
    std::unordered_map<unsigned, double> volumes;
    const auto at = [&](unsigned corner) {
        const CVec3<float>& v = renderable.GetVertexArray()[corner];
        return CVec3<double>(double(v.x) - origin.x, double(v.y) - origin.y, double(v.z) - origin.z);
    };
    for (const auto& corners : triangles)
        volumes[pieces.Of(corners[0])] += Dot(at(corners[0]), Cross(at(corners[1]), at(corners[2])));
    return std::all_of(volumes.begin(), volumes.end(), [](const auto& piece) { return piece.second > 0; });
}

}  // namespace

bool IsClosedSurface(const CPrimitiveRenderable& renderable)
{
    CVec3<float> low;
    CVec3<float> high;
    const auto& vertices = renderable.GetVertexArray();
    const bool isFinite = std::all_of(vertices.begin(), vertices.end(),
                                      [](const CVec3<float>& vertex) { return FitsFloat(VectorCast<double>(vertex)); });
    if (!isFinite || !renderable.IsDrawable() || !renderable.GetBounds(low, high))
        return false;
    const Triangles triangles = trianglesOf(renderable, weld(renderable, low, high));
    return !triangles.empty() && hasNoRim(triangles) && looksOutwards(renderable, triangles, low);
}

}  // namespace kiv
