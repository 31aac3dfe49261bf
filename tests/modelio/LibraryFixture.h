#pragma once

#include <kiv/AppearanceParser.h>
#include <kiv/MaterialLibrary.h>

#include <QColor>
#include <QMap>
#include <QTemporaryDir>

/// A material library in a folder of its own, with the shipped templates, a folder of textures and a user's folder.
class LibraryFixture {
public:
    LibraryFixture();

    QString path(const QString& relative) const { return m_folder.filePath(relative); }
    std::wstring widePath(const QString& relative) const { return path(relative).toStdWString(); }
    void write(const QString& relative, const QByteArray& bytes) const;
    QByteArray read(const QString& relative) const;

    /// Every file and folder below, by relative path; folders end with "/".
    QMap<QString, QByteArray> tree(const QString& relative) const;

    kiv::CAppearanceLibraryManager& manager() { return *m_library.GetMaterialManager(); }
    kiv::CMaterialLibrary& library() { return m_library; }
    kiv::CMaterialLibraryPaths paths() const;

    /// A "Generic" appearance with the id as name; the textures may be empty.
    kiv::CAppearanceInstancePtr makeAppearance(const kiv::String& id, const kiv::String& diffuse = {},
                                               const kiv::String& bump = {});
    QByteArray document(const kiv::CAppearanceInstancePtr& appearance);

private:
    QTemporaryDir m_folder;
    kiv::CMaterialLibrary m_library;
};

QByteArray makePicture(const QColor& color, const char* format);
