#pragma once

#include <kiv/PropertyValue.h>

namespace kiv {

/// What every control of a property offers, whatever its type. The order is an interface to hosts.
class CDynamicProperty {
public:
    /// Shows the value. An empty pointer leaves the control as it is; a value of another type than the control's throws
    /// boost::bad_any_cast.
    virtual void SetValue(const CPropertyValuePtr& value) = 0;
    /// What is shown, as a new value.
    virtual CPropertyValuePtr GetValue() const = 0;

protected:
    ~CDynamicProperty() = default;
};

}  // namespace kiv
