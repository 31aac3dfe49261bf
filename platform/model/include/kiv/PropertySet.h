#pragma once

#include <kiv/PropertyValue.h>

#include <boost/container/flat_map.hpp>

namespace kiv {

/// A map from property key to value, in key order (byte-wise). Not locked: one thread at a time.
class CPropertySet {
public:
    /// Keys and values lie in one block: an appearance has some twenty properties and a library fifty thousand
    /// appearances, so nodes would cost more than what they hold. Any change invalidates iterators.
    using Map = boost::container::flat_map<String, CPropertyValuePtr>;
    using const_iterator = Map::const_iterator;

    /// The value of the key, or null when the set lacks it.
    CPropertyValuePtr FindProperty(const String& key) const;

    /// Sets or replaces the value of the key. False, changing nothing, for a null value or an empty key.
    bool SetProperty(const String& key, const CPropertyValuePtr& value);

    /// False when the set lacks the key.
    bool RemoveProperty(const String& key);

    const_iterator begin() const { return m_properties.begin(); }
    const_iterator end() const { return m_properties.end(); }
    std::size_t size() const { return m_properties.size(); }

    /// The value as a T, or `otherwise` when the key is absent or holds another type. Never throws for either.
    template <typename T>
    T ValueOr(const String& key, T otherwise) const
    {
        const auto found = m_properties.find(key);
        const T* value = found == m_properties.end() ? nullptr : found->second->TryGet<T>();
        return value ? *value : otherwise;
    }

protected:
    Map m_properties;
};

}  // namespace kiv
