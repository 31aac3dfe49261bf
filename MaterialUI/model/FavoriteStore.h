#pragma once

#include <kiv/AppearanceLibraryManager.h>

#include <QString>

namespace kiv {

/// The user's favourites on disk, below the manager's favourite library path: "Favorite Library" holds a document for
/// each favourite, named after its id; "UserLib Textures" holds the textures, named after their content. Every file
/// appears whole or not at all.
class CFavoriteStore {
public:
    explicit CFavoriteStore(const CAppearanceLibraryManager& manager) : m_manager(manager) {}

    /// Copies the appearance's texture files into the store, to which its texture files then refer. False when one
    /// cannot be read or copied; the appearance is then not to be used.
    bool TakeTextures(const CAppearanceInstance& appearance) const;
    /// The SHA-1 of the appearance's document.
    std::string Digest(const CAppearanceInstancePtr& appearance) const;
    bool Contains(const std::string& id) const;
    bool Write(const CAppearanceInstancePtr& appearance) const;

private:
    bool takeTexture(CAppearanceInstance& texture) const;
    QString documentFile(const std::string& id) const;

    const CAppearanceLibraryManager& m_manager;
};

}  // namespace kiv
