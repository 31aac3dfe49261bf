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
    if (IsEmpty())
        return {};
    const kiv::String record = std::move(m_records.back());
    m_records.pop_back();
    kiv::CAppearanceSerializer serializer(manager);
    serializer.SetAppearanceLibrary(library);
    return serializer.DeserializeEditedMaterialData(record);
}

void CEditStack::TakeBackAll(kiv::CAppearanceLibraryManager& manager, const kiv::CAppearanceLibraryPtr& library)
{
    while (!IsEmpty())
        TakeBackLast(manager, library);
}
