#include <kiv/PropertyValue.h>

#include <kiv/AppearanceInstance.h>

namespace kiv {

namespace {

bool areSame(const std::monostate&, const std::monostate&)
{
    return true;
}

bool areSame(const boost::any&, const boost::any&)
{
    return false;
}

bool areSame(const CAppearanceInstancePtr& a, const CAppearanceInstancePtr& b)
{
    return a == b || (a && b && AreEqual(*a, *b));
}

template <typename T>
bool areSame(const T& a, const T& b)
{
    return a == b;
}

/// Puts the value of the any, if it is a T, into the variant.
template <typename T, typename Variant>
bool unpacked(const boost::any& value, Variant& target)
{
    const T* held = boost::any_cast<T>(&value);
    if (held)
        target = *held;
    return held != nullptr;
}

template <typename... Types, typename Variant>
void unpack(const boost::any& value, Variant& target)
{
    if (!(unpacked<Types>(value, target) || ...) && !value.empty())
        target = value;
}

}  // namespace

CPropertyValue::CPropertyValue(const boost::any& value)
{
    unpack<float, bool, int, CVec2<float>, CVec3<float>, CVec4<float>, CMatrix3<float>, String, CAppearanceInstancePtr,
           CRawJson>(value, m_value);
}

const std::type_info& CPropertyValue::GetType() const
{
    return Visit([](const auto& value) -> const std::type_info& {
        using T = std::decay_t<decltype(value)>;
        if constexpr (std::is_same_v<T, boost::any>)
            return value.type();
        else if constexpr (std::is_same_v<T, std::monostate>)
            return typeid(void);
        else
            return typeid(T);
    });
}

boost::any CPropertyValue::GetValue() const
{
    return Visit([](const auto& value) {
        if constexpr (std::is_same_v<std::decay_t<decltype(value)>, std::monostate>)
            return boost::any();
        else
            return boost::any(value);
    });
}

bool CPropertyValue::Equals(const CPropertyValue& other) const
{
    return this == &other || Visit([&](const auto& value) {
               const auto* others = std::get_if<std::decay_t<decltype(value)>>(&other.m_value);
               return others && areSame(value, *others);
           });
}

}  // namespace kiv
