#include "PathGeometry.h"

#include <QTransform>

namespace {

QPainterPath scaled(const QPainterPath& path, double factor)
{
    return QTransform::fromScale(factor, factor).map(path);
}

QPainterPath millimetres(const QPainterPath& path)
{
    return scaled(path, 1000);
}

QPainterPath metres(const QPainterPath& path)
{
    return scaled(path, 0.001);
}

}  // namespace

QPainterPath PathGeometry::united(const QPainterPath& a, const QPainterPath& b)
{
    return metres(millimetres(a).united(millimetres(b)));
}

QPainterPath PathGeometry::intersected(const QPainterPath& a, const QPainterPath& b)
{
    return metres(millimetres(a).intersected(millimetres(b)));
}

QPainterPath PathGeometry::subtracted(const QPainterPath& a, const QPainterPath& b)
{
    const QPainterPath whole = millimetres(a).simplified();
    return metres(b.isEmpty() ? whole : whole.subtracted(millimetres(b)));
}
