#include "SyncedProfile.h"

#include <CloudRequest.h>
#include <CloudService.h>
#include <TestFiles.h>

#include <QCryptographicHash>
#include <QDir>

// A listing that comes late would still write records into the folder that is being deleted. What answers the logout
// comes after it, on the same thread.
SyncedProfile::~SyncedProfile()
{
    CCloudService::Instance().Open({});
    (void)CloudRequests::Logout().Wait();
}

void SyncedProfile::keep(const QString& id, const QByteArray& texture, const QString& name)
{
    const auto favorite = makeAppearance(id.toStdString());
    favorite->SetName(name.toStdString());
    if (!texture.isEmpty()) {
        write("favorites/UserLib Textures/" + textureName(texture), texture);
        favorite->SetUseDiffuseTexture(true);
        favorite->GetDiffuseTexture()->SetTextureFile("UserLib Textures\\" + textureName(texture).toStdString());
    }
    keepDocument(id, document(favorite));
}

void SyncedProfile::keepDocument(const QString& id, const QByteArray& document) const
{
    write("favorites/Favorite Library/" + id + ".json", document);
}

kiv::CAppearanceInstancePtr SyncedProfile::favorite(const QString& id)
{
    return manager().FindUserAppearanceLibrary("Favorite Library")->FindInstance(id.toStdString());
}

QStringList SyncedProfile::favoriteIds()
{
    QStringList ids;
    for (const auto& entry : *manager().FindUserAppearanceLibrary("Favorite Library"))
        ids += QString::fromStdString(entry.first);
    ids.sort();
    return ids;
}

QString SyncedProfile::textureName(const QByteArray& texture)
{
    return QCryptographicHash::hash(texture, QCryptographicHash::Sha1).toHex();
}

SyncedProfile::Files SyncedProfile::files(const QString& folder, const QString& suffix) const
{
    Files found;
    const QDir dir(path(folder));
    for (const QString& name : dir.entryList(QDir::Files | QDir::Hidden)) {
        if (name.endsWith(suffix))
            found[name] = readFile(dir.filePath(name));
    }
    return found;
}
