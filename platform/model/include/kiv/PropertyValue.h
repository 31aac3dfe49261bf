#pragma once

#include <kiv/Matrix3.h>
#include <kiv/Types.h>
#include <kiv/Vector.h>

#include <boost/any.hpp>

#include <typeinfo>
#include <utility>

namespace kiv {

/// A piece of JSON that the model keeps but does not interpret: an undeclared key whose value is none of the types
/// below (null, an object without "template", a list of texts, a number that no float can hold). `text` is minified.
struct CRawJson {
    String text;
    friend bool operator==(const CRawJson& a, const CRawJson& b) { return a.text == b.text; }
};

/// Holder of one property value. Value types: float, bool, int, CVec2<float>, CVec3<float>, CVec4<float> (colours:
/// red, green, blue, alpha, 0..1), CMatrix3<float>, String, CAppearanceInstancePtr (a texture sub-appearance), CRawJson.
///
/// Immutable: a property is changed by setting another value, never by changing the one that is held. That lets all
/// appearances of a template share the template's default values and lets a clone share everything but its textures.
/// Thread: as any immutable object; a held sub-appearance has its own rules.
class CPropertyValue {
public:
    CPropertyValue() = default;  ///< holds nothing; GetType() is typeid(void)
    explicit CPropertyValue(boost::any value) : m_value(std::move(value)) {}

    const std::type_info& GetType() const { return m_value.type(); }
    const boost::any& GetValue() const { return m_value; }

    /// The value as a T. Throws boost::bad_any_cast when another type is held.
    template <typename T>
    const T& Get() const
    {
        return boost::any_cast<const T&>(m_value);
    }

    /// The value as a T, or null when another type is held.
    template <typename T>
    const T* TryGet() const noexcept
    {
        return boost::any_cast<T>(&m_value);
    }

    /// Same type and same value; sub-appearances are compared by content (AreEqual of AppearanceInstance.h).
    bool Equals(const CPropertyValue& other) const;

private:
    boost::any m_value;
};

template <typename T>
CPropertyValuePtr MakePropertyValue(T value)
{
    return std::make_shared<CPropertyValue>(boost::any(std::move(value)));
}

}  // namespace kiv
