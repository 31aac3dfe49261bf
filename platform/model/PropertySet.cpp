#include <kiv/PropertySet.h>

#include <algorithm>

namespace kiv {

CPropertyValuePtr CPropertySet::FindProperty(const String& key) const
{
    const std::size_t index = IndexOf(key);
    return index == size() ? nullptr : m_values[index];
}

bool CPropertySet::SetProperty(const String& key, const CPropertyValuePtr& value)
{
    if (!value || key.empty())
        return false;
    const std::size_t index = lowerBound(key);
    if (index < size() && (*m_keys)[index] == key) {
        m_values[index] = value;
        return true;
    }
    Keys& keys = ownKeys();
    keys.insert(keys.begin() + std::ptrdiff_t(index), key);
    m_values.insert(m_values.begin() + std::ptrdiff_t(index), value);
    return true;
}

bool CPropertySet::RemoveProperty(const String& key)
{
    const std::size_t index = IndexOf(key);
    if (index == size())
        return false;
    Keys& keys = ownKeys();
    keys.erase(keys.begin() + std::ptrdiff_t(index));
    m_values.erase(m_values.begin() + std::ptrdiff_t(index));
    return true;
}

std::size_t CPropertySet::IndexOf(std::string_view key) const
{
    const std::size_t index = lowerBound(key);
    return index < size() && (*m_keys)[index] == key ? index : size();
}

std::size_t CPropertySet::lowerBound(std::string_view key) const
{
    return m_keys ? std::size_t(std::lower_bound(m_keys->begin(), m_keys->end(), key) - m_keys->begin()) : 0;
}

CPropertySet::Keys& CPropertySet::ownKeys()
{
    if (!m_keys || m_keys.use_count() > 1)
        m_keys = m_keys ? std::make_shared<Keys>(*m_keys) : std::make_shared<Keys>();
    return *m_keys;
}

}  // namespace kiv
