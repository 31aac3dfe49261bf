#include "OutlineTriangles.h"

#include <GL/glu.h>

#include <QTransform>

#include <cmath>
#include <cstdint>
#include <map>
#include <memory>
#include <set>

namespace {

constexpr double FlatteningScale = 200;  // Qt flattens to a quarter of its unit: 1.25 mm
constexpr double Grid = 1e5;             // points a hundredth of a millimetre apart are the same

/// Collects what GLU's tessellator reports. Points that coincide become one.
class TriangleSink {
public:
    unsigned add(double x, double y)
    {
        const std::pair<std::int64_t, std::int64_t> cell(std::llround(x * Grid), std::llround(y * Grid));
        const auto known = m_known.emplace(cell, unsigned(points.size()));
        if (known.second)
            points.emplace_back(double(cell.first) / Grid, double(cell.second) / Grid);
        return known.first->second;
    }
    void corner(unsigned index)
    {
        m_corners.push_back(index);
        if (m_corners.size() < 3)
            return;
        const std::array<unsigned, 3> t{m_corners[0], m_corners[1], m_corners[2]};
        if (t[0] != t[1] && t[1] != t[2] && t[2] != t[0])
            triangles.push_back(t);
        m_corners.clear();
    }

    std::vector<QPointF> points;
    std::vector<std::array<unsigned, 3>> triangles;

private:
    std::map<std::pair<std::int64_t, std::int64_t>, unsigned> m_known;
    std::vector<unsigned> m_corners;
};

// Vertices travel through GLU as pointers: the index itself stands in one.
void* asData(unsigned index)
{
    return reinterpret_cast<void*>(std::uintptr_t(index));
}

void onVertex(void* vertex, void* sink)
{
    static_cast<TriangleSink*>(sink)->corner(unsigned(reinterpret_cast<std::uintptr_t>(vertex)));
}

void onCombine(GLdouble place[3], void**, GLfloat*, void** vertex, void* sink)
{
    *vertex = asData(static_cast<TriangleSink*>(sink)->add(place[0], place[1]));
}

// Listening to edge flags makes GLU report separate triangles, no fans and strips.
void onEdgeFlag(GLboolean)
{
}

template <typename Function>
void listen(GLUtesselator* tess, GLenum what, Function* function)
{
    gluTessCallback(tess, what, reinterpret_cast<_GLUfuncptr>(function));
}

void addContour(GLUtesselator* tess, const QPolygonF& polygon, TriangleSink& sink)
{
    gluTessBeginContour(tess);
    for (const QPointF& scaled : polygon) {
        const QPointF point = scaled / FlatteningScale;
        const unsigned index = sink.add(point.x(), point.y());
        GLdouble place[3] = {sink.points[index].x(), sink.points[index].y(), 0};
        gluTessVertex(tess, place, asData(index));
    }
    gluTessEndContour(tess);
}

void tessellate(const QPainterPath& outline, TriangleSink& sink)
{
    const std::unique_ptr<GLUtesselator, decltype(&gluDeleteTess)> tess(gluNewTess(), gluDeleteTess);
    listen(tess.get(), GLU_TESS_VERTEX_DATA, onVertex);
    listen(tess.get(), GLU_TESS_COMBINE_DATA, onCombine);
    listen(tess.get(), GLU_TESS_EDGE_FLAG, onEdgeFlag);
    const bool winding = outline.fillRule() == Qt::WindingFill;
    gluTessProperty(tess.get(), GLU_TESS_WINDING_RULE, winding ? GLU_TESS_WINDING_NONZERO : GLU_TESS_WINDING_ODD);
    gluTessNormal(tess.get(), 0, 0, 1);
    gluTessBeginPolygon(tess.get(), &sink);
    for (const QPolygonF& polygon : outline.toSubpathPolygons(QTransform::fromScale(FlatteningScale, FlatteningScale)))
        addContour(tess.get(), polygon, sink);
    gluTessEndPolygon(tess.get());
}

}  // namespace

OutlineTriangles::OutlineTriangles(const QPainterPath& outline)
{
    TriangleSink sink;
    tessellate(outline, sink);
    m_points = std::move(sink.points);
    m_triangles = std::move(sink.triangles);
    findLoops();
}

void OutlineTriangles::findLoops()
{
    std::set<std::pair<unsigned, unsigned>> open;
    for (const auto& t : m_triangles)
        for (std::size_t i = 0; i < 3; ++i)
            if (!open.erase({t[(i + 1) % 3], t[i]}))
                open.emplace(t[i], t[(i + 1) % 3]);
    while (!open.empty()) {
        Loop loop;
        auto edge = open.begin();
        while (edge != open.end()) {
            loop.push_back(edge->first);
            const unsigned next = edge->second;
            open.erase(edge);
            edge = open.lower_bound({next, 0});
            if (edge != open.end() && edge->first != next)
                edge = open.end();
        }
        m_loops.push_back(loop);
    }
}
