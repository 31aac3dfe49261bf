#include "BSplineBasis.h"

#include <algorithm>

namespace kiv {

namespace {

// The last knot interval with a width that begins at or before the parameter, among those of the surface's range.
int findSpan(const std::vector<double>& knots, int degree, int count, double parameter)
{
    const auto begin = knots.begin() + degree;
    const auto end = knots.begin() + count;
    const auto after = parameter < *end ? std::upper_bound(begin, end, parameter)  //
                                        : std::lower_bound(begin, end, *end);
    return int(after - knots.begin()) - 1;
}

// A2.2. Divided before multiplying: at an end with repeated knots the quotient, and so the value, is exactly 1.
void basisFunctions(const double* knot, int degree, double parameter, double* values)
{
    values[0] = 1;
    for (int j = 1; j <= degree; ++j) {
        double saved = 0;
        for (int r = 0; r < j; ++r) {
            const double right = knot[r + 1] - parameter;
            const double left = parameter - knot[r + 1 - j];
            const double width = right + left;
            const double value = values[r];
            values[r] = saved + right / width * value;
            saved = left / width * value;
        }
        values[j] = saved;
    }
}

// From the functions of one degree less; `knot` is where the span begins.
void differentiate(const double* knot, int degree, const double* lower, double* derivatives)
{
    double saved = 0;
    for (int i = 0; i < degree; ++i) {
        const double slope = degree * lower[i] / (knot[i + 1] - knot[i + 1 - degree]);
        derivatives[i] = saved - slope;
        saved = slope;
    }
    derivatives[degree] = saved;
}

}  // namespace

CBSplineBasis::CBSplineBasis(const std::vector<double>& knots, int count, double parameter)
    : degree(int(knots.size()) - count - 1)
{
    const int span = findSpan(knots, degree, count, parameter);
    const double* knot = knots.data() + span;
    first = span - degree;
    double lower[MaxDegree + 1];
    basisFunctions(knot, degree - 1, parameter, lower);
    differentiate(knot, degree, lower, derivatives);
    basisFunctions(knot, degree, parameter, values);
}

}  // namespace kiv
