#pragma once

#include <kiv/AppearanceLibraryManager.h>

#include <set>
#include <vector>

/// The records of the edits made in open dialogs, in their order. There is one stack for the process, since there is
/// one project; each record belongs to the dialog that pushed it, which keeps or takes back its own only.
/// User-interface thread.
class CEditStack {
public:
    /// Only compared. Whoever goes clears its records before, so that nobody inherits them with the address.
    using Owner = const void*;

    static CEditStack& Instance();

    /// An empty record is of an edit that nobody can take back; it is left out.
    void Push(const kiv::String& record, Owner owner);
    bool Has(Owner owner) const;
    bool IsEmpty() const { return m_records.empty(); }
    void Clear(Owner owner);
    /// Of all owners.
    void Clear() { m_records.clear(); }

    /// Takes the owner's last edit back in the library whose appearance is still there; records of others are dropped
    /// on the way. The appearance concerned; null when there was no such edit.
    kiv::CAppearanceInstancePtr TakeBackLast(Owner owner, kiv::CAppearanceLibraryManager& manager,
                                             const kiv::CAppearanceLibraryPtr& library);
    /// All of the owner's, the last one first. The appearances concerned, each once.
    std::set<kiv::CAppearanceInstancePtr> TakeBackAll(Owner owner, kiv::CAppearanceLibraryManager& manager,
                                                      const kiv::CAppearanceLibraryPtr& library);

private:
    struct Record {
        kiv::String text;
        Owner owner;
    };

    /// The owner's last text, off the stack; empty when it has none.
    kiv::String popLast(Owner owner);

    std::vector<Record> m_records;
};
