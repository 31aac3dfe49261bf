#pragma once

#include <vector>

namespace kiv {

/// The B-spline basis functions that are not zero at a parameter, and their first derivatives.
struct CBSplineBasis {
    static constexpr int MaxDegree = 9;

    /// Of knots that do not fall, and a parameter within their range.
    CBSplineBasis(const std::vector<double>& knots, int count, double parameter);

    int degree;
    int first;  ///< control point that values[0] belongs to
    double values[MaxDegree + 1];
    double derivatives[MaxDegree + 1];
};

}  // namespace kiv
