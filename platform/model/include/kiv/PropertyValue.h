#pragma once

#include <kiv/Matrix3.h>
#include <kiv/Types.h>
#include <kiv/Vector.h>

#include <boost/any.hpp>

#include <type_traits>
#include <typeinfo>
#include <utility>
#include <variant>

namespace kiv {

/// A piece of JSON that the model keeps but does not interpret: an undeclared key whose value is none of the types
/// below (null, an object without "template", a list of texts, a number that no float can hold). `text` is minified.
struct CRawJson {
    String text;
    friend bool operator==(const CRawJson& a, const CRawJson& b) { return a.text == b.text; }
};

/// Holder of one property value. Value types: float, bool, int, CVec2<float>, CVec3<float>, CVec4<float> (colours:
/// red, green, blue, alpha, 0..1), CMatrix3<float>, String, CAppearanceInstancePtr (a texture sub-appearance),
/// CRawJson. A value of any other type is held and answered too, but no document can store it.
///
/// Immutable: a property is changed by setting another value, never by changing the one that is held. That lets all
/// appearances of a template share the template's default values and lets a clone share everything but its textures.
/// Thread: as any immutable object; a held sub-appearance has its own rules.
class CPropertyValue {
    // The value types lie in the object itself: a boost::any allocates each, which is most of the time of reading a
    // library.
    using Value = std::variant<std::monostate, float, bool, int, CVec2<float>, CVec3<float>, CVec4<float>,
                               CMatrix3<float>, String, CAppearanceInstancePtr, CRawJson, boost::any>;
    template <typename T, typename Variant>
    struct IsAlternative;
    template <typename T, typename... Types>
    struct IsAlternative<T, std::variant<Types...>> : std::disjunction<std::is_same<T, Types>...> {
    };

public:
    CPropertyValue() = default;  ///< holds nothing; GetType() is typeid(void)
    explicit CPropertyValue(const boost::any& value);
    template <typename T, typename = std::enable_if_t<IsAlternative<T, Value>::value>>
    explicit CPropertyValue(T value) : m_value(std::move(value))
    {
    }

    const std::type_info& GetType() const;
    /// The value as a boost::any, made for each call.
    boost::any GetValue() const;

    /// The value as a T. Throws boost::bad_any_cast when another type is held.
    template <typename T>
    const T& Get() const
    {
        if (const T* value = TryGet<T>())
            return *value;
        throw boost::bad_any_cast();
    }

    /// The value as a T, or null when another type is held.
    template <typename T>
    const T* TryGet() const noexcept
    {
        if constexpr (IsAlternative<T, Value>::value) {
            return std::get_if<T>(&m_value);
        } else {
            const auto* other = std::get_if<boost::any>(&m_value);
            return other ? boost::any_cast<T>(other) : nullptr;
        }
    }

    /// Calls the function with the value as its own type: one of the value types, std::monostate when nothing is held,
    /// or a boost::any that holds another type.
    template <typename Function>
    decltype(auto) Visit(Function&& function) const
    {
        return std::visit(std::forward<Function>(function), m_value);
    }

    /// Same type and same value; sub-appearances are compared by content (AreEqual of AppearanceInstance.h). Values
    /// that are none of the value types are equal only to themselves.
    bool Equals(const CPropertyValue& other) const;

private:
    Value m_value;
};

template <typename T>
CPropertyValuePtr MakePropertyValue(T value)
{
    if constexpr (std::is_constructible_v<CPropertyValue, T>)
        return std::make_shared<CPropertyValue>(std::move(value));
    else
        return std::make_shared<CPropertyValue>(boost::any(std::move(value)));
}

}  // namespace kiv
