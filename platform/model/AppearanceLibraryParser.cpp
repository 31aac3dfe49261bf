#include <kiv/AppearanceLibraryParser.h>

#include "AppearanceDocumentReader.h"
#include "JsonDocument.h"
#include "NarrowText.h"

#include <kiv/system/StoredPath.h>

#include <QFileInfo>

namespace kiv {

namespace {

constexpr long long MaxLibraryBytes = 1LL << 30;
constexpr long long MaxConfigurationBytes = 1LL << 20;
const char* const ConfigurationName = "library.json";

/// Adds the documents of a parsed library file.
class CLibraryFiller {
public:
    CLibraryFiller(const CAppearanceLibraryManager& manager, CAppearanceLibrary& library, String place,
                   CParseReport& report)
        : m_reader(manager), m_library(library), m_place(std::move(place)), m_report(report)
    {
    }

    bool Fill(simdjson::dom::element root)
    try {
        simdjson::dom::array documents;
        if (root.at_key("appearances").get(documents)) {
            m_report.push_back({m_place, "a library file is an object with a list of \"appearances\""});
            return false;
        }
        takeName(root);
        std::size_t index = 0;
        for (const auto document : documents)
            add(document, index++);
        return true;
    } catch (const std::bad_alloc&) {
        m_report.push_back({m_place, "is too large for the memory"});
        return false;
    }

private:
    void takeName(simdjson::dom::element root)
    {
        std::string_view utf8;
        if (m_library.GetName().empty() && !root.at_key("name").get(utf8))
            m_library.SetName(NarrowFromUtf8(utf8));
        if (m_library.GetId().empty() && !root.at_key("id").get(utf8))
            m_library.SetId(NarrowFromUtf8(utf8));
    }

    void add(simdjson::dom::element document, std::size_t index)
    {
        CParseError error;
        const auto appearance = m_reader.Read(document, error);
        if (appearance && !m_library.AddInstance(appearance))
            error = appearance->GetId().empty() ? CParseError{"/id", "the appearance has no identifier"}
                                                : CParseError{"/id", "the library has this identifier already"};
        if (error.empty())
            return;
        error.place.insert(0, m_place + "/appearances/" + std::to_string(index));
        m_report.push_back(std::move(error));
    }

    CAppearanceDocumentReader m_reader;
    CAppearanceLibrary& m_library;
    String m_place;
    CParseReport& m_report;
};

}  // namespace

bool CAppearanceLibraryParser::AppearanceLibraryFromFile(const CAppearanceLibraryPtr& library, const std::wstring& path)
{
    CJsonDocument document;
    CParseError error;
    if (library && document.ParseFile(path, MaxLibraryBytes, error))
        return CLibraryFiller(m_manager, *library, FilePlace(path), m_report).Fill(document.GetRoot());
    if (library)
        m_report.push_back(std::move(error));
    return false;
}

bool CAppearanceLibraryParser::AppearanceLibraryFromString(const CAppearanceLibraryPtr& library, const String& text,
                                                           const String& place)
{
    CJsonDocument document;
    CParseError error{place, {}};
    if (library && text.size() <= std::size_t(MaxLibraryBytes) && document.Parse(text, error))
        return CLibraryFiller(m_manager, *library, place, m_report).Fill(document.GetRoot());
    if (library && error.empty())
        Refuse(error, "is larger than a library file may be");
    if (library)
        m_report.push_back(std::move(error));
    return false;
}

bool CAppearanceLibraryParser::ConfigLibrayFromFile(const std::wstring& path)
{
    const bool isFolder = QFileInfo(system::NativePath(path)).isDir();
    const std::wstring file =
        isFolder ? system::JoinPath(path, QString(ConfigurationName).toStdWString()).toStdWString() : path;
    CJsonDocument document;
    CParseError error;
    std::string_view utf8;
    const bool read = document.ParseFile(file, MaxConfigurationBytes, error) &&
                      ((!document.GetRoot().at_key("textureUnit").get(utf8) && !utf8.empty()) ||
                       Refuse(error, "a library configuration is an object with the text \"textureUnit\""));
    if (read)
        m_manager.SetTextureUnit(NarrowFromUtf8(utf8));
    else
        m_report.push_back(std::move(error));
    return read;
}

}  // namespace kiv
