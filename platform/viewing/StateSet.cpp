#include <kiv/StateSet.h>

#include <cmath>

namespace kiv {

namespace {

bool isFinite(bool)
{
    return true;
}

bool isFinite(int)
{
    return true;
}

bool isFinite(float value)
{
    return std::isfinite(value);
}

bool isFinite(const CVec2<float>& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y);
}

bool isFinite(const CVec3<float>& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

bool isFinite(const CVec4<float>& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z) && std::isfinite(v.w);
}

bool isFinite(const CMatrix3<float>& matrix)
{
    for (const float element : matrix.m) {
        if (!std::isfinite(element))
            return false;
    }
    return true;
}

}  // namespace

bool CStateSet::SetUniform(const std::string& name, const Uniform& value)
{
    if (!std::visit([](const auto& v) { return isFinite(v); }, value))
        return false;
    m_uniforms[name] = value;
    return true;
}

}  // namespace kiv
