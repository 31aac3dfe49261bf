#pragma once

#include <LibraryGenerator.h>

#include <kiv/AppearanceLibraryParser.h>
#include <kiv/MaterialLibrary.h>

#include <QString>
#include <QTemporaryDir>

#include <map>

/// The shipped material library with a project of any size; favourites lie in a folder that goes with the program.
class ProjectLibrary {
public:
    static constexpr const char* Name = "Customer Library";

    ProjectLibrary()
    {
        const std::wstring data = QStringLiteral(MATERIAL_DATA_DIR).toStdWString();
        m_library.Open({data, data + L"/textures", m_favorites.path().toStdWString()});
    }

    static ProjectLibrary& Instance()
    {
        static ProjectLibrary instance;
        return instance;
    }

    kiv::CMaterialLibrary& Library() { return m_library; }
    kiv::CAppearanceLibraryManager& Manager() { return *m_library.GetMaterialManager(); }

    /// Gives the project about this many appearances; the same library every time.
    const kiv::CAppearanceLibraryPtr& Fill(int count)
    {
        kiv::CAppearanceLibraryPtr& library = m_filled[count];
        if (!library) {
            library = std::make_shared<kiv::CAppearanceLibrary>();
            kiv::CAppearanceLibraryParser(Manager()).AppearanceLibraryFromString(library, GenerateLibrary({count}), "");
            library->SetName(Name);
            library->SetId(Name);
        }
        Manager().DeleteUserAppearanceLibrary(Name);
        Manager().AddUserAppearanceLibrary(library);
        return library;
    }

private:
    QTemporaryDir m_favorites;
    kiv::CMaterialLibrary m_library;
    std::map<int, kiv::CAppearanceLibraryPtr> m_filled;
};
