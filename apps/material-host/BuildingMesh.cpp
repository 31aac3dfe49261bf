#include "BuildingMesh.h"

#include "BuildingSolids.h"
#include "OutlineTriangles.h"

#include <kiv/VectorMath.h>

#include <cmath>

using Vec2 = kiv::CVec2<double>;
using Vec3 = kiv::CVec3<double>;

namespace {

constexpr int Rings = 8;
constexpr double RoundEnd = 1.35;     // radians; what is beyond is flat
constexpr double SmoothCosine = 0.8;  // edges that turn by less than about 37 degrees belong to a curve

Vec2 unit(const Vec2& v)
{
    const double length = std::hypot(v.x, v.y);
    return length > 0 ? Vec2(v.x / length, v.y / length) : v;
}

/// What is seen to the right of who walks from a to b: out of the body.
Vec2 outward(const QPointF& a, const QPointF& b)
{
    return unit({b.y() - a.y(), a.x() - b.x()});
}

bool isSmooth(const Vec2& a, const Vec2& b)
{
    return a.x * b.x + a.y * b.y > SmoothCosine;
}

Vec2 between(const Vec2& a, const Vec2& b)
{
    return unit({a.x + b.x, a.y + b.y});
}

}  // namespace

/// Turns one solid into faces that it adds to a mesh.
class BuildingMesh::Extrusion {
public:
    Extrusion(const BuildingSolid& solid, bool round, BuildingMesh& target)
        : m_solid(solid), m_round(round), m_flat(solid.outline), m_target(target), m_middle(m_flat.points().size())
    {
        m_foot = m_flat.points().empty() ? 0 : m_flat.points().front().y();
        for (const QPointF& point : m_flat.points())
            m_foot = qMin(m_foot, point.y());
    }

    void add()
    {
        for (const OutlineTriangles::Loop& loop : m_flat.loops())
            findMiddle(loop);
        addFace(true);  // first: it hides the others, which then need not be shaded
        for (const OutlineTriangles::Loop& loop : m_flat.loops())
            if (m_round)
                addRings(loop);
            else
                addWalls(loop);
        addFace(false);
    }

private:
    double frontAt(const QPointF& p) const { return -m_solid.front + m_solid.lean * (p.y() - m_foot); }
    double backAt(const QPointF& p) const
    {
        return qMax(frontAt(p), -m_solid.back - m_solid.backLean * (p.y() - m_foot));
    }
    Vec3 front(const QPointF& p) const { return {p.x(), frontAt(p), p.y()}; }
    Vec3 back(const QPointF& p) const { return {p.x(), backAt(p), p.y()}; }

    unsigned addVertex(const Vec3& place, const Vec3& normal, const Vec2& texture)
    {
        kiv::CTriangleMesh& mesh = m_target.m_mesh;
        mesh.vertices.push_back(kiv::VectorCast<float>(place));
        mesh.normals.push_back(kiv::VectorCast<float>(normal));
        mesh.textureCoordinates.push_back(kiv::VectorCast<float>(texture));
        return unsigned(mesh.vertices.size() - 1);
    }

    void addTriangle(unsigned a, unsigned b, unsigned c)
    {
        for (const unsigned index : {a, b, c})
            m_target.m_mesh.indices.push_back(index);
    }

    void addEdge(const Vec3& from, const Vec3& to)
    {
        m_target.m_edges.push_back({kiv::VectorCast<float>(from), kiv::VectorCast<float>(to)});
    }

    void addFace(bool isFront)
    {
        const double lean = isFront ? m_solid.lean : m_solid.backLean;
        const double slope = std::sqrt(1 + lean * lean);
        const Vec3 normal(0, (isFront ? -1 : 1) / slope, lean / slope);
        const unsigned first = unsigned(m_target.m_mesh.vertices.size());
        const auto& points = m_flat.points();
        for (std::size_t i = 0; i < points.size(); ++i) {
            const Vec2 texture(isFront ? points[i].x() : -points[i].x(), points[i].y() * slope);
            const double angle = isFront ? -RoundEnd : RoundEnd;
            addVertex(m_round ? onRing(i, angle) : isFront ? front(points[i]) : back(points[i]), normal, texture);
        }
        for (const auto& t : m_flat.triangles())
            addTriangle(first + t[0], first + t[isFront ? 1 : 2], first + t[isFront ? 2 : 1]);
    }

    void addWalls(const OutlineTriangles::Loop& loop)
    {
        const std::size_t count = loop.size();
        const auto point = [&](std::size_t i) { return m_flat.points()[loop[i % count]]; };
        for (std::size_t i = 0; i < count; ++i) {
            const Vec2 before = outward(point(i + count - 1), point(i));
            const Vec2 here = outward(point(i), point(i + 1));
            const Vec2 after = outward(point(i + 1), point(i + 2));
            if (!isSmooth(before, here))
                addEdge(front(point(i)), back(point(i)));
            addWall(point(i), point(i + 1), isSmooth(before, here) ? between(before, here) : here,
                    isSmooth(here, after) ? between(here, after) : here);
        }
    }

    void addWall(const QPointF& a, const QPointF& b, const Vec2& normalA, const Vec2& normalB)
    {
        const Vec3 atA(normalA.x, 0, normalA.y);
        const Vec3 atB(normalB.x, 0, normalB.y);
        const unsigned frontA = addVertex(front(a), atA, onWall(a, a, b, frontAt(a)));
        const unsigned backA = addVertex(back(a), atA, onWall(a, a, b, backAt(a)));
        const unsigned backB = addVertex(back(b), atB, onWall(b, a, b, backAt(b)));
        const unsigned frontB = addVertex(front(b), atB, onWall(b, a, b, frontAt(b)));
        addTriangle(frontA, backA, backB);
        addTriangle(frontA, backB, frontB);
        addEdge(front(a), front(b));
        addEdge(back(a), back(b));
    }

    /// A point of a round body: from the front (-90 degrees) the outline grows to its full size and shrinks again.
    Vec3 onRing(std::size_t index, double angle) const
    {
        const QPointF p = m_middle[index] + (m_flat.points()[index] - m_middle[index]) * std::cos(angle);
        const double middle = -(m_solid.front + m_solid.back) / 2;
        return {p.x(), middle + (m_solid.front - m_solid.back) / 2 * std::sin(angle), p.y()};
    }

    void findMiddle(const OutlineTriangles::Loop& loop)
    {
        QPolygonF polygon;
        for (const unsigned index : loop)
            polygon.append(m_flat.points()[index]);
        for (const unsigned index : loop)
            m_middle[index] = polygon.boundingRect().center();
    }

    void addRings(const OutlineTriangles::Loop& loop)
    {
        double run = 0;
        for (std::size_t i = 0; i < loop.size(); ++i) {
            const unsigned a = loop[i];
            const unsigned b = loop[(i + 1) % loop.size()];
            const QPointF side = m_flat.points()[b] - m_flat.points()[a];
            const double end = run + std::hypot(side.x(), side.y());
            const unsigned before = loop[(i + loop.size() - 1) % loop.size()];
            const unsigned after = loop[(i + 2) % loop.size()];
            addSegment({a, rim(before, a, b), run}, {b, rim(a, b, after), end});
            addEdge(onRing(a, 0), onRing(b, 0));
            run = end;
        }
    }

    struct Meridian {
        unsigned index;
        Vec2 rim;    // out of the body
        double run;  // along the outline
    };

    Vec2 rim(unsigned before, unsigned here, unsigned after) const
    {
        const auto& points = m_flat.points();
        return between(outward(points[before], points[here]), outward(points[here], points[after]));
    }

    /// The stripe between two points of the outline, from the front to the back.
    void addSegment(const Meridian& a, const Meridian& b)
    {
        const double radius = (m_solid.front - m_solid.back) / 2;
        const auto vertex = [&](const Meridian& m, double angle) {
            const Vec3 normal(m.rim.x * std::cos(angle), std::sin(angle), m.rim.y * std::cos(angle));
            return addVertex(onRing(m.index, angle), normal, {m.run, -angle * radius});
        };
        for (int ring = 0; ring < Rings; ++ring) {
            const double from = RoundEnd * (2.0 * ring / Rings - 1);
            const double to = RoundEnd * (2.0 * (ring + 1) / Rings - 1);
            const unsigned corner = vertex(a, from);
            vertex(a, to);
            vertex(b, to);
            vertex(b, from);
            addTriangle(corner, corner + 1, corner + 2);
            addTriangle(corner, corner + 2, corner + 3);
        }
    }

    /// Upright walls are seen with z up, as the front is; what lies flat with y up, as a floor plan.
    static Vec2 onWall(const QPointF& p, const QPointF& a, const QPointF& b, double y)
    {
        const double dx = b.x() - a.x();
        const double dz = b.y() - a.y();
        const double length = std::hypot(dx, dz);
        if (std::abs(dz) > std::abs(dx))
            return {dz > 0 ? y : -y, p.y() * length / std::abs(dz)};
        return {p.x() * length / std::abs(dx), dx < 0 ? y : -y};
    }

    const BuildingSolid& m_solid;
    bool m_round;
    OutlineTriangles m_flat;
    BuildingMesh& m_target;
    std::vector<QPointF> m_middle;  // by point: of the loop that it belongs to
    double m_foot = 0;
};

BuildingMesh::BuildingMesh(const BuildingElement& element, const QRectF& extent)
{
    for (const BuildingSolid& solid : BuildingSolids::of(element, extent))
        Extrusion(solid, element.round, *this).add();
}
