#include "EditStack.h"

#include <kiv/AppearanceSerializer.h>

CEditStack& CEditStack::Instance()
{
    static CEditStack stack;
    return stack;
}

void CEditStack::Push(const kiv::String& record)
{
    if (!record.empty())
        m_records.push_back(record);
}

kiv::CAppearanceInstancePtr CEditStack::TakeBackLast(kiv::CAppearanceLibraryManager& manager,
                                                     const kiv::CAppearanceLibraryPtr& library)
{
    kiv::CAppearanceSerializer serializer(manager);
    serializer.SetAppearanceLibrary(library);
    kiv::CAppearanceInstancePtr appearance;
    while (!appearance && !IsEmpty()) {
        appearance = serializer.DeserializeEditedMaterialData(m_records.back());
        m_records.pop_back();
    }
    return appearance;
}

std::set<kiv::CAppearanceInstancePtr> CEditStack::TakeBackAll(kiv::CAppearanceLibraryManager& manager,
                                                              const kiv::CAppearanceLibraryPtr& library)
{
    std::set<kiv::CAppearanceInstancePtr> concerned;
    while (const auto appearance = TakeBackLast(manager, library))
        concerned.insert(appearance);
    return concerned;
}
