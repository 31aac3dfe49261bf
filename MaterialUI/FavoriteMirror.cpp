#include "FavoriteMirror.h"

#include "FavoriteTexturePaths.h"

#include <AppearanceTextures.h>
#include <CloudService.h>
#include <MaterialConstants.h>

#include <glenox/StdStringTrans.h>
#include <kiv/AppearanceParser.h>
#include <kiv/system/StoredPath.h>

#include <QFile>
#include <QFileInfo>

#include <algorithm>

using kiv::CAppearanceInstance;
using kiv::CAppearanceInstancePtr;
using kiv::GStdStringTrans;

namespace {

QString textureName(const CAppearanceInstance& texture)
{
    const std::wstring file = GStdStringTrans::StringToWString(texture.GetTextureFile());
    return QString::fromStdWString(kiv::system::LastSegment(file));
}

// A document may have got there without its texture, and is told by the listing as if it were whole.
bool isLackedByCloud(const QString& textureName)
{
    const CCloudIndex& index = CCloudService::Instance().GetIndex();
    return index.IsLoaded(CCloudIndex::Textures) && index.Find(CCloudIndex::Textures, textureName).isEmpty();
}

// Empty, or why it is still there.
QString removeFile(const QString& path)
{
    QFile file(path);
    if (path.isEmpty() || file.remove() || !QFileInfo::exists(path))
        return {};
    return file.errorString();
}

}  // namespace

CloudFolders CFavoriteMirror::Folders() const
{
    const std::wstring& root = m_manager.GetFavoriteLibraryPath();
    if (root.empty())
        return {};
    const std::wstring favorites = GStdStringTrans::StringToWString(FAVORITE_LIBRARY_NAME);
    return {kiv::system::JoinPath(root, favorites), kiv::system::JoinPath(root, L"UserLib Textures")};
}

kiv::CAppearanceLibraryPtr CFavoriteMirror::library() const
{
    return m_manager.FindUserAppearanceLibrary(FAVORITE_LIBRARY_NAME);
}

// ---- what is to be sent

CFavoriteMirror::Files CFavoriteMirror::Collect()
{
    Files files;
    const auto favorites = library();
    if (!favorites)
        return files;
    const CloudFolders folders = Folders();
    for (const auto& entry : *favorites) {
        const QString id = QString::fromLocal8Bit(entry.first.c_str());
        const QString document = folders.document(id);
        if (!kiv::system::IsPlainName(id.toStdWString()) || !kiv::system::IsRegularFile(document))
            continue;
        const auto diffuse = entry.second->GetDiffuseTexture();
        const kiv::String stored = diffuse ? diffuse->GetTextureFile() : kiv::String();
        if (m_comparison.IsRecorded(document) && (stored.empty() || !isLackedByCloud(textureName(*diffuse))))
            continue;
        const QString texture = QString::fromLocal8Bit(m_manager.ResolvePath(stored).c_str());
        if (!stored.empty() && !maySend(stored, texture))
            continue;
        files.documents.append(document);
        files.textures.append(texture);
    }
    return files;
}

// A document that was brought may name any file of this machine. Only what lies in the libraries goes out.
bool CFavoriteMirror::maySend(const kiv::String& stored, const QString& texture) const
{
    const QString file = QFileInfo(texture).canonicalFilePath();
    const QString root = QFileInfo(Folders().favorites + QStringLiteral("/..")).canonicalFilePath();
    const bool isOwn = !file.isEmpty() && !root.isEmpty() && file.startsWith(root + '/');
    const bool isLibrarys = !kiv::system::IsAbsolutePath(GStdStringTrans::StringToWString(stored)) &&
                            file == QFileInfo(texture).absoluteFilePath();
    return kiv::system::IsRegularFile(texture) && (isOwn || isLibrarys);
}

// ---- what came

CFavoriteMirror::Arrivals CFavoriteMirror::TakeArrivals()
{
    Arrivals arrivals;
    const CCloudIndex& index = CCloudService::Instance().GetIndex();
    const QStringList documents = index.GetArrived(CCloudIndex::Documents, m_documentsSeen);
    const QStringList textures = index.GetArrived(CCloudIndex::Textures, m_texturesSeen);
    m_documentsSeen += documents.size();
    m_texturesSeen += textures.size();
    for (const QString& id : documents)
        arrivals.isAnyNew = takeDocument(id) || arrivals.isAnyNew;
    if (!textures.isEmpty())
        addWithTextures({textures.begin(), textures.end()}, arrivals.pictured);
    return arrivals;
}

bool CFavoriteMirror::IsUpToDate() const
{
    return CCloudService::Instance().GetIndex().GetArrived(CCloudIndex::Documents, m_documentsSeen).isEmpty();
}

void CFavoriteMirror::Restart()
{
    m_documentsSeen = 0;
}

// A favourite that was removed since has no document any more.
bool CFavoriteMirror::takeDocument(const QString& id)
{
    const auto favorites = library();
    if (!favorites)
        return false;
    CAppearanceInstancePtr favorite = favorites->FindInstance(id.toLocal8Bit().toStdString());
    const bool isNew = !favorite;
    if (isNew)
        favorite = read(Folders().document(id));
    if (!favorite || (isNew && !favorites->AddInstance(favorite)))
        return false;
    favorite->SetCloudFlag(true);
    PointAtCopies(*favorite);
    return isNew;
}

CAppearanceInstancePtr CFavoriteMirror::read(const QString& document) const
{
    if (!kiv::system::IsRegularFile(document))
        return {};
    auto favorite = kiv::CAppearanceParser(m_manager).AppearanceFromFile(document.toStdWString());
    if (favorite)
        CFavoriteTexturePaths(m_manager).Reroot(*favorite);
    return favorite;
}

void CFavoriteMirror::addWithTextures(const QSet<QString>& names, std::vector<CAppearanceInstancePtr>& pictured) const
{
    const auto favorites = library();
    if (!favorites)
        return;
    for (const auto& entry : *favorites) {
        const QStringList own = TextureNames(*entry.second);
        if (std::none_of(own.begin(), own.end(), [&](const QString& name) { return names.contains(name); }))
            continue;
        PointAtCopies(*entry.second);
        pictured.push_back(entry.second);
    }
}

// ---- what is removed

// Otherwise it would be back the next time the favourites are read. The file that is named after it may be another's.
QString CFavoriteMirror::RemoveDocument(const CAppearanceInstance& favorite)
{
    const QString id = QString::fromLocal8Bit(favorite.GetId().c_str());
    const QString file = m_files.value(id);
    const CloudFolders folders = Folders();
    const bool isPlain = !folders.favorites.isEmpty() && kiv::system::IsPlainName(id.toStdWString());
    const QString own = isPlain ? folders.document(id) : QString();
    QString reason = removeFile(file);
    if (reason.isEmpty() && !own.isEmpty() && own != file && isDocumentOf(own, favorite.GetId()))
        reason = removeFile(own);
    if (!reason.isEmpty())
        return reason;
    m_files.remove(id);
    if (isPlain)
        QFile::remove(folders.record(id));
    return {};
}

bool CFavoriteMirror::isDocumentOf(const QString& file, const kiv::String& id) const
{
    if (!kiv::system::IsRegularFile(file))
        return false;
    const auto stored = kiv::CAppearanceParser(m_manager).AppearanceFromFile(file.toStdWString());
    return stored && stored->GetId() == id;
}

// ---- textures

void CFavoriteMirror::RequestTextures(const CAppearanceInstance& appearance) const
{
    const QString records = Folders().records();
    for (const CAppearanceInstancePtr& texture : kiv::FindTextures(appearance)) {
        const std::wstring file = GStdStringTrans::StringToWString(texture->GetTextureFile());
        const bool isHere = kiv::system::IsRegularFile(QString::fromStdWString(m_manager.ResolvePath(file))) ||
                            (!kiv::system::IsAbsolutePath(file) && !kiv::system::ClimbsOut(file) &&
                             kiv::system::IsRegularFile(kiv::system::JoinPath(records.toStdWString(), file)));
        if (!isHere)
            CCloudService::Instance().GetDownloads().Request(CCloudIndex::Textures, textureName(*texture));
    }
}

void CFavoriteMirror::PointAtCopies(const CAppearanceInstance& appearance) const
{
    const QString folder = Folders().textures;
    for (const CAppearanceInstancePtr& texture : kiv::FindTextures(appearance)) {
        const QString name = textureName(*texture);
        const QString copy = folder + '/' + name;
        if (kiv::system::IsPlainName(name.toStdWString()) && kiv::system::IsRegularFile(copy))
            texture->SetTextureFile(copy.toLocal8Bit().toStdString());
    }
}

QSet<QString> CFavoriteMirror::UsedTextures() const
{
    QSet<QString> names;
    const auto favorites = library();
    if (!favorites)
        return names;
    for (const auto& entry : *favorites) {
        for (const QString& name : TextureNames(*entry.second))
            names.insert(name);
    }
    return names;
}

QStringList CFavoriteMirror::TextureNames(const CAppearanceInstance& appearance)
{
    QStringList names;
    for (const CAppearanceInstancePtr& texture : kiv::FindTextures(appearance))
        names.append(textureName(*texture));
    return names;
}
