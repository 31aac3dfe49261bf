#pragma once

#include <kiv/TriangleMesh.h>

#include <vector>

namespace kiv {

/// A tensor-product NURBS surface. Degrees follow from the counts: knots = control points + degree + 1, in each
/// direction.
class CNurbsSurface {
public:
    void SetControlPointCounts(int countU, int countV);
    void SetKnots(std::vector<double> knotsU, std::vector<double> knotsV);
    /// x, y, z in metres and the weight (not multiplied in), u running fastest.
    void SetControlPoints(std::vector<CVec4<double>> points);

    /// Whether the parts fit together: at least 2 points each way, a degree of 1 to 9, knots that do not fall and span
    /// a range above 0, finite points with weights above 0.
    bool IsValid() const;

    /// Lowest and highest parameter in each direction, of a valid surface.
    CVec2<double> GetRangeU() const;
    CVec2<double> GetRangeV() const;

    /// Point, and the normal of length 1 (along du x dv), of a valid surface; parameters outside are moved to the
    /// border. Exact in the corners when the end knots are repeated degree + 1 times. Where the derivatives vanish, the
    /// normal is taken a little beside. Algorithms A2.2 and A4.3/4.4 of Piegl and Tiller, The NURBS Book, 2nd ed.
    CVec3<double> Evaluate(double u, double v, CVec3<double>* normal = nullptr) const;

private:
    int m_countU = 0;
    int m_countV = 0;
    std::vector<double> m_knotsU;
    std::vector<double> m_knotsV;
    std::vector<CVec4<double>> m_points;
};

/// How finely a surface is turned into triangles.
class CMeshParameter {
public:
    explicit CMeshParameter(int stepsU = 32, int stepsV = 32) : m_stepsU(stepsU), m_stepsV(stepsV) {}

    /// Evenly in both parameters, which become the texture coordinates. Empty for a surface that is not valid; steps
    /// below 1 and above 1024 are moved there.
    CTriangleMesh SurfaceToMesh(const CNurbsSurface& surface) const;

    /// Moves and scales the texture coordinates of the mesh to 0..1 in both directions.
    static void NormalizeSurfaceUV(CTriangleMesh& mesh);

private:
    int m_stepsU;
    int m_stepsV;
};

}  // namespace kiv
