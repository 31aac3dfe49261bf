#pragma once

#include <QPainterPath>

/// Set operations on outlines in metres. Qt merges points closer than a fraction of its unit, so they are done in
/// millimetres.
namespace PathGeometry {

QPainterPath united(const QPainterPath& a, const QPainterPath& b);
QPainterPath intersected(const QPainterPath& a, const QPainterPath& b);
QPainterPath subtracted(const QPainterPath& a, const QPainterPath& b);

}  // namespace PathGeometry
