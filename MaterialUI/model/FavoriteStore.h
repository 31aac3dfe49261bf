#pragma once

#include <kiv/AppearanceLibraryManager.h>

#include <QString>
#include <QStringList>

namespace kiv {

/// The user's favourites on disk, below the manager's favourite library path: "Favorite Library" holds a document for
/// each favourite, named after its id; "UserLib Textures" holds the textures, named after their content. Every file
/// appears whole or not at all, and missing folders are made. One object stores one favourite.
class CFavoriteStore {
public:
    explicit CFavoriteStore(const CAppearanceLibraryManager& manager) : m_manager(manager) {}

    /// Copies the appearance's texture files into the store, to which its texture files then refer. False when one
    /// cannot be read or copied or is no picture; the appearance is then not to be used.
    bool TakeTextures(const CAppearanceInstance& appearance);
    /// The SHA-1 of the appearance's document.
    std::string Digest(const CAppearanceInstancePtr& appearance) const;
    bool Contains(const std::string& id) const;
    bool Write(const CAppearanceInstancePtr& appearance);

    /// Why taking or writing failed: the file (a path of this machine) and the system's word on it. What was copied is
    /// gone again then; what the store had before is untouched.
    const QString& GetReason() const { return m_reason; }

private:
    bool takeTexture(CAppearanceInstance& texture);
    bool fail(const QString& file, const QString& reason);
    QString documentFile(const std::string& id) const;

    const CAppearanceLibraryManager& m_manager;
    QStringList m_added;  ///< textures that the store did not have
    QString m_reason;
};

}  // namespace kiv
