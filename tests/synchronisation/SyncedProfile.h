#pragma once

#include <DialogFixture.h>

/// A user's folder on one machine, with favourites.
class SyncedProfile : public DialogFixture {
public:
    using Files = QMap<QString, QByteArray>;  ///< what they hold, by name

    SyncedProfile() = default;
    ~SyncedProfile();
    SyncedProfile(const SyncedProfile&) = delete;
    SyncedProfile& operator=(const SyncedProfile&) = delete;

    /// Stores a favourite as one of that id; `texture` is what its picture holds, none when empty.
    void keep(const QString& id, const QByteArray& texture = {}, const QString& name = QStringLiteral("favourite"));
    void keepDocument(const QString& id, const QByteArray& document) const;
    kiv::CAppearanceInstancePtr favorite(const QString& id);
    QStringList favoriteIds();

    Files documents() const { return files(QStringLiteral("favorites/Favorite Library"), QStringLiteral(".json")); }
    Files records() const
    {
        return files(QStringLiteral("favorites/Favorite Library/CloudLib"), QStringLiteral(".json"));
    }
    Files textures() const { return files(QStringLiteral("favorites/UserLib Textures")); }

    /// The name that a texture gets.
    static QString textureName(const QByteArray& texture);

private:
    Files files(const QString& folder, const QString& suffix = {}) const;
};
