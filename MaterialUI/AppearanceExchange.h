#pragma once

#include <kiv/MaterialLibrary.h>

#include <QCoreApplication>
#include <QStringList>

#include <vector>

class QWidget;

/// Appearances as files that travel: ".ggm" archives with their textures, and ".json" documents without. Many files
/// are gone through behind a progress dialog that can be cancelled; nested events run meanwhile. What goes wrong with
/// one file does not hold up the others.
class CAppearanceExchange {
    Q_DECLARE_TR_FUNCTIONS(CAppearanceExchange)

public:
    using Appearances = std::vector<kiv::CAppearanceInstancePtr>;

    /// Library and owner (the parent of the progress dialog) are borrowed.
    CAppearanceExchange(kiv::CMaterialLibrary& library, QWidget& owner) : m_library(library), m_owner(owner) {}

    /// Writes one archive; an older file of the path stays whole when that fails. A path that does not end in ".ggm"
    /// gets that, and a number where such a file exists: nobody was asked whether that may be replaced.
    bool Write(const kiv::CAppearanceInstancePtr& appearance, const QString& chosen);
    /// Writes an archive for each into the folder, under free names.
    void WriteAll(const Appearances& appearances, const QString& folder);

    /// Reads the files, in their order. What comes is editable and belongs to no library yet: one whose id is taken in
    /// the library or any other one, or by one before it, gets a new one; one without a name is called after its file.
    /// None when it was cancelled.
    Appearances Read(const QStringList& files, const kiv::CAppearanceLibrary& library);

    /// A sentence, of bounded length, for each file that could not be read or written, and for each archive that lacks
    /// textures.
    const QStringList& Complaints() const { return m_complaints; }

    /// The shown name as the name of a file, without suffix.
    QString FileName(const kiv::CAppearanceInstance& appearance) const;
    /// Whether the file can be one of these, by its suffix.
    static bool IsExchangeFile(const QString& path);

private:
    kiv::CAppearanceInstancePtr readFile(const QString& path);
    bool isTaken(const kiv::String& id) const;
    void complain(const QString& path, const QString& reason);
    QString archivePath(const QString& path) const;
    QString freePath(const QString& folder, const QString& name) const;
    int countMissingTextures(const kiv::CAppearanceInstance& appearance) const;

    kiv::CMaterialLibrary& m_library;
    QWidget& m_owner;
    QStringList m_complaints;
};
