#pragma once

#include <kiv/AppearanceLibraryManager.h>

#include <set>
#include <vector>

/// The records of the edits made since the dialog was opened, in their order. There is one stack for the process, since
/// there is one project. User-interface thread.
class CEditStack {
public:
    static CEditStack& Instance();

    /// An empty record is of an edit that nobody can take back; it is left out.
    void Push(const kiv::String& record);
    bool IsEmpty() const { return m_records.empty(); }
    void Clear() { m_records.clear(); }

    /// Takes the last edit back in the library whose appearance is still there; records of others are dropped on the
    /// way. The appearance concerned; null when there was no such edit.
    kiv::CAppearanceInstancePtr TakeBackLast(kiv::CAppearanceLibraryManager& manager,
                                             const kiv::CAppearanceLibraryPtr& library);
    /// All of them, the last one first. The appearances concerned, each once.
    std::set<kiv::CAppearanceInstancePtr> TakeBackAll(kiv::CAppearanceLibraryManager& manager,
                                                      const kiv::CAppearanceLibraryPtr& library);

private:
    std::vector<kiv::String> m_records;
};
