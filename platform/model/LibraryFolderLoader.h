#pragma once

#include <kiv/AppearanceLibraryManager.h>

#include <QStringList>

namespace kiv {

/// Fills a manager from a library root. What cannot be read is named in the report, and the rest is loaded.
class CLibraryFolderLoader {
public:
    /// `root` in stored form.
    CLibraryFolderLoader(CAppearanceLibraryManager& manager, const std::wstring& root, CParseReport& report)
        : m_manager(manager), m_root(root), m_report(report)
    {
    }

    void LoadConfiguration();
    void LoadTexts();
    /// False when there is not one.
    bool LoadTemplates();
    /// False when the folder cannot be read.
    bool LoadSystemLibrary();

private:
    bool listDocuments(const String& folder, QStringList& paths);
    bool loadTemplate(const QString& path);
    void report(const QString& path, const CParseError& error);

    CAppearanceLibraryManager& m_manager;
    std::wstring m_root;
    CParseReport& m_report;
};

}  // namespace kiv
