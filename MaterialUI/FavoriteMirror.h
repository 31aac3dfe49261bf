#pragma once

#include <UploadRecords.h>

#include <kiv/AppearanceLibraryManager.h>

#include <CloudFolders.h>

#include <QHash>
#include <QSet>
#include <QStringList>

#include <vector>

/// The favourite library and its files on one side, the cloud on the other: what is to be sent, and what came. On the
/// user-interface thread.
class CFavoriteMirror {
public:
    /// The manager is borrowed.
    explicit CFavoriteMirror(const kiv::CAppearanceLibraryManager& manager) : m_manager(manager) {}

    /// Where the manager's favourites lie.
    CloudFolders Folders() const;

    struct Files {
        QStringList documents;
        QStringList textures;  ///< of the same order; empty where there is none
    };
    /// What the cloud does not have as it stands here. A favourite without a document of its own or whose texture is
    /// missing is left out. Documents are read only when they changed since.
    Files Collect();
    /// How often Collect() read a document, for those who measure.
    int CountReadings() const { return m_comparison.CountReadings(); }

    struct Arrivals {
        bool isAnyNew = false;                              ///< the library has more favourites than before
        std::vector<kiv::CAppearanceInstancePtr> pictured;  ///< whose textures came
    };
    /// Takes over what came since the last call: new favourites are added, those that the cloud has are marked.
    Arrivals TakeArrivals();
    /// Whether everything that came was taken over.
    bool IsUpToDate() const;
    /// The library was filled anew: what came by now counts again.
    void Restart();

    /// From which files the favourites were read, by their ids.
    void SetFiles(const QHash<QString, QString>& files) { m_files = files; }
    /// Takes a favourite's document off the disk, whatever the file's name. Textures stay. Empty, or why it is still
    /// there.
    QString RemoveDocument(const kiv::CAppearanceInstance& favorite);

    /// Asks for the textures of an appearance that are neither here nor under way.
    void RequestTextures(const kiv::CAppearanceInstance& appearance) const;
    /// Points texture files at the copies among the favourites' textures.
    void PointAtCopies(const kiv::CAppearanceInstance& appearance) const;
    /// The names of the textures of all favourites.
    QSet<QString> UsedTextures() const;
    static QStringList TextureNames(const kiv::CAppearanceInstance& appearance);

private:
    bool maySend(const kiv::String& stored, const QString& texture) const;
    kiv::CAppearanceLibraryPtr library() const;
    bool takeDocument(const QString& id);
    bool isDocumentOf(const QString& file, const kiv::String& id) const;
    kiv::CAppearanceInstancePtr read(const QString& document) const;
    void addWithTextures(const QSet<QString>& names, std::vector<kiv::CAppearanceInstancePtr>& pictured) const;

    const kiv::CAppearanceLibraryManager& m_manager;
    CUploadComparison m_comparison;
    QHash<QString, QString> m_files;
    int m_documentsSeen = 0;
    int m_texturesSeen = 0;
};
