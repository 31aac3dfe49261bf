#pragma once

#include <kiv/AppearanceLibraryManager.h>

namespace kiv {

/// The kinds of edited-material records.
enum EnEditedMaterialKind { EditedMaterialAdded = 0, EditedMaterialChanged = 1, EditedMaterialDeleted = 2 };

/// Makes the records that let an edit of a library be taken back. A record is self-contained text (one JSON object);
/// its cost depends on the appearance, not on the library. User-interface thread.
class CAppearanceSerializer {
public:
    explicit CAppearanceSerializer(CAppearanceLibraryManager& manager) : m_manager(manager) {}

    void SetAppearanceLibrary(const CAppearanceLibraryPtr& library) { m_library = library; }

    /// The record of an edit of the appearance with this id. Kind 0 is made after adding; kinds 1 (`text` is the key
    /// that is about to change) and 2 are made before the edit, since they hold the appearance as it stands. Empty when
    /// no library is set, the library lacks the id, or the kind is none of the three.
    String SerializeEditedMaterialData(const String& id, int kind, const String& text) const;

    /// Takes the edit back: kind 0 removes the appearance from the library, kind 1 gives the same object its state
    /// before, kind 2 puts the appearance back. The appearance concerned; null, changing nothing, for text that is no
    /// record and for an appearance that is gone (0, 1) or is there again (2).
    CAppearanceInstancePtr DeserializeEditedMaterialData(const String& text) const;

private:
    CAppearanceLibraryManager& m_manager;
    CAppearanceLibraryPtr m_library;
};

}  // namespace kiv
