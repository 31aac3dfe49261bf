#include <kiv/TangentHelper.h>

#include <kiv/VectorMath.h>

#include <algorithm>

namespace kiv {

namespace {

using Vector = CVec3<double>;

/// The directions in which the texture coordinates grow, summed over triangles.
struct CTextureAxes {
    Vector alongU;
    Vector alongV;
};

bool fitTogether(const CPrimitiveRenderable& renderable)
{
    const std::size_t count = renderable.GetVertexArray().size();
    const std::vector<unsigned>& indices = renderable.GetIndexArray();
    return renderable.GetTextureChannels() > 0 && renderable.GetNormalArray().size() == count &&
           renderable.GetTextureArray(0).size() == count && indices.size() % 3 == 0 &&
           std::all_of(indices.begin(), indices.end(), [count](unsigned index) { return index < count; });
}

// False where the triangle does not tell, or has numbers that are not finite.
bool axesOf(const CPrimitiveRenderable& renderable, const unsigned* corners, CTextureAxes& axes)
{
    const auto edge = [&](unsigned i) {
        return VectorCast<double>(renderable.GetVertexArray()[corners[i]]) -
               VectorCast<double>(renderable.GetVertexArray()[corners[0]]);
    };
    const auto step = [&](unsigned i) {
        return VectorCast<double>(renderable.GetTextureArray(0)[corners[i]]) -
               VectorCast<double>(renderable.GetTextureArray(0)[corners[0]]);
    };
    const Vector edge1 = edge(1), edge2 = edge(2);
    const CVec2<double> step1 = step(1), step2 = step(2);
    const double turn = step1.x * step2.y - step2.x * step1.y;
    const double sign = turn > 0 ? 1 : -1;
    const Vector alongU = (edge1 * step2.y - edge2 * step1.y) * sign;
    const Vector alongV = (edge2 * step1.x - edge1 * step2.x) * sign;
    if (!(std::abs(turn) > 0) || !(Length(Cross(edge1, edge2)) > 0) || !(Length(alongU) > 0 && Length(alongV) > 0))
        return false;
    axes = {Normalized(alongU), Normalized(alongV)};
    return true;
}

std::vector<CTextureAxes> sumAxes(const CPrimitiveRenderable& renderable)
{
    std::vector<CTextureAxes> sums(renderable.GetVertexArray().size());
    const std::vector<unsigned>& indices = renderable.GetIndexArray();
    for (std::size_t i = 0; i < indices.size(); i += 3) {
        CTextureAxes axes;
        if (!axesOf(renderable, &indices[i], axes))
            continue;
        for (std::size_t corner = i; corner < i + 3; ++corner) {
            CTextureAxes& sum = sums[indices[corner]];
            sum.alongU = sum.alongU + axes.alongU;
            sum.alongV = sum.alongV + axes.alongV;
        }
    }
    return sums;
}

// Across the axis that the normal is farthest from.
Vector anyPerpendicular(const Vector& normal)
{
    const bool isAlongX = std::abs(normal.x) > 0.7;
    return Normalized(Perpendicular(isAlongX ? Vector(0, 1, 0) : Vector(1, 0, 0), normal));
}

CVec4<float> tangentOf(const Vector& normal, const CTextureAxes& axes)
{
    Vector tangent = Perpendicular(axes.alongU, normal);
    tangent = Length(tangent) > 1e-6 ? Normalized(tangent) : anyPerpendicular(normal);
    const bool isMirrored = Dot(Cross(normal, tangent), axes.alongV) < 0;
    return {float(tangent.x), float(tangent.y), float(tangent.z), isMirrored ? -1.f : 1.f};
}

// Normals that have no direction count as up.
Vector unitNormal(const CVec3<float>& normal)
{
    const Vector exact = VectorCast<double>(normal);
    return Length(exact) > 0 && FitsFloat(exact) ? Normalized(exact) : Vector(0, 0, 1);
}

}  // namespace

bool CTangentHelper::GenTangents(CPrimitiveRenderable& renderable)
{
    if (!fitTogether(renderable))
        return false;
    const std::vector<CTextureAxes> sums = sumAxes(renderable);
    std::vector<CVec4<float>> tangents;
    tangents.reserve(sums.size());
    for (std::size_t i = 0; i < sums.size(); ++i)
        tangents.push_back(tangentOf(unitNormal(renderable.GetNormalArray()[i]), sums[i]));
    renderable.SetTangentArray(std::move(tangents));
    return true;
}

}  // namespace kiv
