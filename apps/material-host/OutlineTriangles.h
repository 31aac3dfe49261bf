#pragma once

#include <QPainterPath>
#include <QPointF>

#include <array>
#include <vector>

/// An outline with its holes cut into triangles, and the loops that bound them. Curves become polygons that are off by
/// no more than about a millimetre.
class OutlineTriangles {
public:
    using Loop = std::vector<unsigned>;  ///< indices into the points; what is inside lies to the left

    explicit OutlineTriangles(const QPainterPath& outline);

    const std::vector<QPointF>& points() const { return m_points; }
    /// Counter-clockwise, y up.
    const std::vector<std::array<unsigned, 3>>& triangles() const { return m_triangles; }
    /// Made of the triangles' own edges, so that a wall along them leaves no gap.
    const std::vector<Loop>& loops() const { return m_loops; }

private:
    void findLoops();

    std::vector<QPointF> m_points;
    std::vector<std::array<unsigned, 3>> m_triangles;
    std::vector<Loop> m_loops;
};
