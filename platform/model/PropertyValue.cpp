#include <kiv/PropertyValue.h>

#include <kiv/AppearanceInstance.h>

namespace kiv {

namespace {

/// Says whether both hold a T and, if so, whether they are equal.
template <typename T>
bool compared(const CPropertyValue& a, const CPropertyValue& b, bool& equal)
{
    const T* left = a.TryGet<T>();
    const T* right = b.TryGet<T>();
    if (!left || !right)
        return false;
    equal = *left == *right;
    return true;
}

template <>
bool compared<CAppearanceInstancePtr>(const CPropertyValue& a, const CPropertyValue& b, bool& equal)
{
    const auto* left = a.TryGet<CAppearanceInstancePtr>();
    const auto* right = b.TryGet<CAppearanceInstancePtr>();
    if (!left || !right)
        return false;
    equal = *left == *right || (*left && *right && AreEqual(**left, **right));
    return true;
}

template <typename... Types>
bool anyCompared(const CPropertyValue& a, const CPropertyValue& b, bool& equal)
{
    return (compared<Types>(a, b, equal) || ...);
}

}  // namespace

bool CPropertyValue::Equals(const CPropertyValue& other) const
{
    if (this == &other)
        return true;
    bool equal = false;
    if (anyCompared<float, bool, int, String, CVec2<float>, CVec3<float>, CVec4<float>, CMatrix3<float>,
                    CAppearanceInstancePtr, CRawJson>(*this, other, equal))
        return equal;
    return GetType() == typeid(void) && other.GetType() == typeid(void);
}

}  // namespace kiv
