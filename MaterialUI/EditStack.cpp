#include "EditStack.h"

#include <kiv/AppearanceSerializer.h>

#include <algorithm>

CEditStack& CEditStack::Instance()
{
    static CEditStack stack;
    return stack;
}

void CEditStack::Push(const kiv::String& record, Owner owner)
{
    if (!record.empty())
        m_records.push_back({record, owner});
}

bool CEditStack::Has(Owner owner) const
{
    return std::any_of(m_records.begin(), m_records.end(),
                       [owner](const Record& record) { return record.owner == owner; });
}

void CEditStack::Clear(Owner owner)
{
    const auto isOwn = [owner](const Record& record) { return record.owner == owner; };
    m_records.erase(std::remove_if(m_records.begin(), m_records.end(), isOwn), m_records.end());
}

kiv::String CEditStack::popLast(Owner owner)
{
    const auto last = std::find_if(m_records.rbegin(), m_records.rend(),
                                   [owner](const Record& record) { return record.owner == owner; });
    if (last == m_records.rend())
        return {};
    kiv::String text = std::move(last->text);
    m_records.erase(std::next(last).base());
    return text;
}

kiv::CAppearanceInstancePtr CEditStack::TakeBackLast(Owner owner, kiv::CAppearanceLibraryManager& manager,
                                                     const kiv::CAppearanceLibraryPtr& library)
{
    kiv::CAppearanceSerializer serializer(manager);
    serializer.SetAppearanceLibrary(library);
    kiv::CAppearanceInstancePtr appearance;
    while (!appearance && Has(owner))
        appearance = serializer.DeserializeEditedMaterialData(popLast(owner));
    return appearance;
}

std::set<kiv::CAppearanceInstancePtr> CEditStack::TakeBackAll(Owner owner, kiv::CAppearanceLibraryManager& manager,
                                                              const kiv::CAppearanceLibraryPtr& library)
{
    std::set<kiv::CAppearanceInstancePtr> concerned;
    while (const auto appearance = TakeBackLast(owner, manager, library))
        concerned.insert(appearance);
    return concerned;
}
