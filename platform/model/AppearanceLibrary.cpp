#include <kiv/AppearanceLibrary.h>

#include <kiv/AppearanceInstance.h>

namespace kiv {

CAppearanceInstancePtr CAppearanceLibrary::FindInstance(const String& id) const
{
    const auto found = m_appearances.find(id);
    return found == m_appearances.end() ? nullptr : found->second;
}

bool CAppearanceLibrary::AddInstance(const CAppearanceInstancePtr& appearance)
{
    if (!appearance)
        return false;
    const String id = appearance->GetId();
    return !id.empty() && m_appearances.emplace(id, appearance).second;
}

bool CAppearanceLibrary::DeleteInstance(const String& id)
{
    return m_appearances.erase(id) != 0;
}

}  // namespace kiv
