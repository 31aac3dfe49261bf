#pragma once

#include <kiv/AppearanceLibraryManager.h>

#include <QHash>

/// Points texture files of favourites at the copies that lie in the user's own favourites folder, whose place differs
/// from one machine and account to the next. One object serves a whole folder: it remembers which folders exist.
class CFavoriteTexturePaths {
public:
    /// The manager is borrowed for the life of the object.
    explicit CFavoriteTexturePaths(const kiv::CAppearanceLibraryManager& manager);

    /// A file that is not found in the favourites folder keeps its stored path.
    void Reroot(const kiv::CAppearanceInstance& appearance);

private:
    bool exists(const QString& file);

    std::wstring m_root;
    QHash<QString, bool> m_folders;
};
