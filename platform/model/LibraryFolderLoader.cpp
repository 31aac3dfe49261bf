#include "LibraryFolderLoader.h"

#include "JsonDocument.h"

#include <kiv/AppearanceLibraryParser.h>
#include <kiv/system/StoredPath.h>

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace kiv {

namespace {

const char* const TextureTemplateName = "Texture";
const char* const SystemLibraryFolder = "System Library";
constexpr long long MaxTemplateBytes = 16LL * 1024 * 1024;

}  // namespace

/// Names the file, unless the error's own place already begins with it.
void CLibraryFolderLoader::report(const QString& path, const CParseError& error)
{
    const String name = FilePlace(path.toStdWString());
    if (error.place.compare(0, name.size(), name) == 0)
        m_report.push_back(error);
    else
        m_report.push_back({name + error.place, error.reason});
}

/// The folder's JSON files in the order of their names. False with a report when there is no such folder to read.
bool CLibraryFolderLoader::listDocuments(const String& folder, QStringList& paths)
{
    const QString path = system::JoinPath(m_root, std::wstring(folder.begin(), folder.end()));
    const QFileInfo info(path);
    if (!info.isDir() || !info.isReadable() || !info.isExecutable()) {
        report(path, {{}, info.exists() ? "is no folder that can be read" : "there is no such folder"});
        return false;
    }
    for (const QString& name : QDir(path).entryList({"*.json"}, QDir::Files | QDir::System, QDir::Name))
        paths.append(QDir(path).filePath(name));
    return true;
}

void CLibraryFolderLoader::LoadConfiguration()
{
    CAppearanceLibraryParser parser(m_manager);
    const bool read = parser.ConfigLibrayFromFile(m_root);
    m_report.insert(m_report.end(), parser.GetReport().begin(), parser.GetReport().end());
    if (!read && parser.GetReport().empty())
        m_report.push_back({"library.json", "is missing or no library configuration"});
}

void CLibraryFolderLoader::LoadTexts()
{
    QStringList paths;
    listDocuments("texts", paths);
    for (const QString& path : paths) {
        CParseError error;
        if (!m_manager.LoadTexts(path.toStdWString(), error))
            report(path, error);
    }
}

bool CLibraryFolderLoader::LoadTemplates()
{
    QStringList paths;
    listDocuments("templates", paths);
    // The other templates hold textures, and need theirs to be known.
    std::stable_partition(paths.begin(), paths.end(), [](const QString& path) {
        return QFileInfo(path).completeBaseName() == QLatin1String(TextureTemplateName);
    });
    return std::count_if(paths.begin(), paths.end(), [this](const QString& path) { return loadTemplate(path); }) > 0;
}

bool CLibraryFolderLoader::loadTemplate(const QString& path)
{
    QByteArray text;
    QString reason;
    if (!system::ReadWholeFile(path, MaxTemplateBytes, text, reason)) {
        report(path, {{}, reason.toLocal8Bit().toStdString()});
        return false;
    }
    CParseError error;
    const auto textures = m_manager.FindTemplate(TextureTemplateName);
    const auto read = CAppearanceTemplate::FromJson(text.toStdString(), textures, error);
    if (read)
        m_manager.AddTemplate(read);
    else
        report(path, error);
    return read != nullptr;
}

bool CLibraryFolderLoader::LoadSystemLibrary()
{
    QStringList paths;
    if (!listDocuments(SystemLibraryFolder, paths))
        return false;
    const auto library = m_manager.GetSystemLibrary();
    CAppearanceLibraryParser parser(m_manager);
    for (const QString& path : paths)
        parser.AppearanceLibraryFromFile(library, path.toStdWString());
    m_report.insert(m_report.end(), parser.GetReport().begin(), parser.GetReport().end());
    for (const auto& [id, appearance] : *library) {
        if (appearance->GetEditType() != 0)
            appearance->SetEditType(0);
    }
    return true;
}

}  // namespace kiv
