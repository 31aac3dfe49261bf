#pragma once

#include <HostOptions.h>

#include <kiv/MaterialLibrary.h>

#include <QTemporaryDir>

/// The shipped material library with a user's folder of its own.
class HostFixture {
public:
    HostFixture();

    kiv::CMaterialLibrary& library() { return m_library; }
    kiv::CAppearanceLibraryManager& manager() { return *m_library.GetMaterialManager(); }
    const HostOptions& options() const { return m_options; }
    QString path(const QString& name) const { return m_folder.filePath(name); }

    kiv::CAppearanceInstancePtr systemMaterial(const kiv::String& name);
    QByteArray document(const kiv::CAppearanceInstancePtr& appearance);

private:
    QTemporaryDir m_folder;
    HostOptions m_options;
    kiv::CMaterialLibrary m_library;
};
