#include <kiv/NurbsSurface.h>

#include "BSplineBasis.h"

#include <kiv/VectorMath.h>

#include <algorithm>

namespace kiv {

namespace {

using Vector = CVec3<double>;

bool areValidKnots(const std::vector<double>& knots, int count)
{
    if (count < 2)
        return false;
    const int degree = int(knots.size()) - count - 1;
    if (degree < 1 || degree > CBSplineBasis::MaxDegree || degree >= count)
        return false;
    const auto isFinite = [](double knot) { return FitsFloat(knot); };
    return std::all_of(knots.begin(), knots.end(), isFinite) && std::is_sorted(knots.begin(), knots.end()) &&
           knots[std::size_t(degree)] < knots[std::size_t(count)];
}

CVec2<double> range(const std::vector<double>& knots, int count)
{
    return {knots[knots.size() - std::size_t(count) - 1], knots[std::size_t(count)]};
}

// What is no number goes to the lower border.
double moveInto(const CVec2<double>& borders, double value)
{
    return value > borders.x ? std::min(value, borders.y) : borders.x;
}

struct CSurfacePoint {
    Vector place;
    Vector alongU;  // derivatives
    Vector alongV;
};

/// The control points that act at a parameter, and how much.
class CLocalNet {
public:
    CLocalNet(const std::vector<CVec4<double>>& points, int countU, const CBSplineBasis& u, const CBSplineBasis& v)
        : m_points(points), m_countU(countU), m_u(u), m_v(v)
    {
    }

    // Weights are divided by their sum before anything is multiplied with them: where only one point acts, its factor
    // is then exactly 1.
    CSurfacePoint Evaluate() const
    {
        double sum = 0;
        forEach([&](const CVec4<double>& point, int i, int j) { sum += m_u.values[i] * m_v.values[j] * point.w; });
        CSurfacePoint result;
        forEach([&](const CVec4<double>& point, int i, int j) {
            const double share = m_u.values[i] * m_v.values[j] * point.w / sum;
            result.place = result.place + Vector(point.x, point.y, point.z) * share;
        });
        // The quotient rule, with the place drawn into the sum.
        forEach([&](const CVec4<double>& point, int i, int j) {
            const Vector lever = (Vector(point.x, point.y, point.z) - result.place) * (point.w / sum);
            result.alongU = result.alongU + lever * (m_u.derivatives[i] * m_v.values[j]);
            result.alongV = result.alongV + lever * (m_u.values[i] * m_v.derivatives[j]);
        });
        return result;
    }

private:
    template <typename Visit>
    void forEach(const Visit& visit) const
    {
        for (int j = 0; j <= m_v.degree; ++j) {
            const int row = (m_v.first + j) * m_countU + m_u.first;
            for (int i = 0; i <= m_u.degree; ++i)
                visit(m_points[std::size_t(row) + std::size_t(i)], i, j);
        }
    }

    const std::vector<CVec4<double>>& m_points;
    int m_countU;
    const CBSplineBasis& m_u;
    const CBSplineBasis& m_v;
};

// False where the surface has no direction: a derivative vanishes, or both are parallel.
bool normalOf(const CSurfacePoint& point, double rangeU, double rangeV, Vector& normal)
{
    constexpr double smallest = 1e-10;
    const Vector alongU = point.alongU * rangeU;
    const Vector alongV = point.alongV * rangeV;
    const Vector across = Cross(alongU, alongV);
    const double scale = std::max(Dot(alongU, alongU), Dot(alongV, alongV));
    if (!(Length(across) > smallest * scale))
        return false;
    normal = Normalized(across);
    return true;
}

}  // namespace

void CNurbsSurface::SetControlPointCounts(int countU, int countV)
{
    m_countU = countU;
    m_countV = countV;
}

void CNurbsSurface::SetKnots(std::vector<double> knotsU, std::vector<double> knotsV)
{
    m_knotsU = std::move(knotsU);
    m_knotsV = std::move(knotsV);
}

void CNurbsSurface::SetControlPoints(std::vector<CVec4<double>> points)
{
    m_points = std::move(points);
}

bool CNurbsSurface::IsValid() const
{
    const auto isValidPoint = [](const CVec4<double>& point) {
        return FitsFloat(Vector(point.x, point.y, point.z)) && FitsFloat(point.w) && point.w > 0;
    };
    return areValidKnots(m_knotsU, m_countU) && areValidKnots(m_knotsV, m_countV) &&
           m_points.size() == std::size_t(m_countU) * std::size_t(m_countV) &&
           std::all_of(m_points.begin(), m_points.end(), isValidPoint);
}

CVec2<double> CNurbsSurface::GetRangeU() const
{
    return range(m_knotsU, m_countU);
}

CVec2<double> CNurbsSurface::GetRangeV() const
{
    return range(m_knotsV, m_countV);
}

CVec3<double> CNurbsSurface::Evaluate(double u, double v, CVec3<double>* normal) const
{
    const CVec2<double> rangeU = GetRangeU();
    const CVec2<double> rangeV = GetRangeV();
    u = moveInto(rangeU, u);
    v = moveInto(rangeV, v);
    const auto evaluate = [&](double atU, double atV) {
        return CLocalNet(m_points, m_countU, {m_knotsU, m_countU, atU}, {m_knotsV, m_countV, atV}).Evaluate();
    };
    const CSurfacePoint point = evaluate(u, v);
    if (!normal)
        return point.place;

    // Beside: towards a place off the middle, so that the middle itself is left as well.
    constexpr double goal = 0.47;
    const double sizeU = rangeU.y - rangeU.x;
    const double sizeV = rangeV.y - rangeV.x;
    bool isFound = normalOf(point, sizeU, sizeV, *normal);
    for (double step = 1e-5; !isFound && step < 1; step *= 100) {
        const double besideU = u + (rangeU.x + goal * sizeU - u) * step;
        const double besideV = v + (rangeV.x + goal * sizeV - v) * step;
        isFound = normalOf(evaluate(besideU, besideV), sizeU, sizeV, *normal);
    }
    if (!isFound)
        *normal = {0, 0, 1};  // a line or a point
    return point.place;
}

}  // namespace kiv
