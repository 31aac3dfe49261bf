#include <kiv/PropertySet.h>

namespace kiv {

CPropertyValuePtr CPropertySet::FindProperty(const String& key) const
{
    const auto found = m_properties.find(key);
    return found == m_properties.end() ? nullptr : found->second;
}

bool CPropertySet::SetProperty(const String& key, const CPropertyValuePtr& value)
{
    if (!value || key.empty())
        return false;
    m_properties.insert_or_assign(key, value);
    return true;
}

bool CPropertySet::RemoveProperty(const String& key)
{
    return m_properties.erase(key) != 0;
}

}  // namespace kiv
