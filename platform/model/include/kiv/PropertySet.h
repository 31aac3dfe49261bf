#pragma once

#include <kiv/PropertyValue.h>

#include <iterator>
#include <string_view>
#include <vector>

namespace kiv {

/// A map from property key to value, in key order (byte-wise). Not locked: one thread at a time.
///
/// An appearance has some forty properties with its textures and a library fifty thousand appearances, so the keys are
/// held once for all sets that were made from one template, until one of them gets or loses a key.
class CPropertySet {
public:
    using Keys = std::vector<String>;

    /// Reads like an iterator of a map: it->first is the key, it->second the value. What it refers to is made on the
    /// way (bind it by value or to a const reference). Any change of the set invalidates iterators.
    class const_iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = std::pair<const String&, const CPropertyValuePtr&>;
        using reference = value_type;
        using difference_type = std::ptrdiff_t;
        struct pointer {
            value_type property;
            const value_type* operator->() const { return &property; }
        };

        const_iterator(const String* key, const CPropertyValuePtr* value) : m_key(key), m_value(value) {}

        reference operator*() const { return {*m_key, *m_value}; }
        pointer operator->() const { return {**this}; }
        const_iterator& operator++()
        {
            ++m_key;
            ++m_value;
            return *this;
        }
        const_iterator operator++(int)
        {
            const const_iterator before = *this;
            ++*this;
            return before;
        }
        friend bool operator==(const const_iterator& a, const const_iterator& b) { return a.m_value == b.m_value; }
        friend bool operator!=(const const_iterator& a, const const_iterator& b) { return !(a == b); }

    private:
        const String* m_key;
        const CPropertyValuePtr* m_value;
    };

    /// The value of the key, or null when the set lacks it.
    CPropertyValuePtr FindProperty(const String& key) const;

    /// Sets or replaces the value of the key. False, changing nothing, for a null value or an empty key.
    bool SetProperty(const String& key, const CPropertyValuePtr& value);

    /// False when the set lacks the key.
    bool RemoveProperty(const String& key);

    const_iterator begin() const { return {m_keys ? m_keys->data() : nullptr, m_values.data()}; }
    const_iterator end() const
    {
        return {m_keys ? m_keys->data() + m_keys->size() : nullptr, m_values.data() + m_values.size()};
    }
    std::size_t size() const { return m_values.size(); }

    /// The value as a T, or `otherwise` when the key is absent or holds another type. Never throws for either.
    template <typename T>
    T ValueOr(std::string_view key, T otherwise) const
    {
        const std::size_t index = IndexOf(key);
        const T* value = index == size() ? nullptr : m_values[index]->TryGet<T>();
        return value ? *value : otherwise;
    }

protected:
    /// The place of the key, or size() when the set lacks it.
    std::size_t IndexOf(std::string_view key) const;

    std::shared_ptr<Keys> m_keys;  ///< sorted; shared, so replaced and not changed unless this is the only holder
    std::vector<CPropertyValuePtr> m_values;

private:
    friend class CAppearanceDocumentReader;

    std::size_t lowerBound(std::string_view key) const;
    Keys& ownKeys();
};

}  // namespace kiv
