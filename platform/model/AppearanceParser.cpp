#include <kiv/AppearanceParser.h>

#include "AppearanceArchive.h"
#include "AppearanceDocumentReader.h"
#include "AppearanceDocumentWriter.h"
#include "JsonDocument.h"

#include <kiv/AppearanceLibraryManager.h>

#include <cstring>
#include <utility>

namespace kiv {

namespace {

constexpr long long MaxDocumentBytes = 16LL * 1024 * 1024;

}  // namespace

struct CAppearanceParser::Private {
    explicit Private(const CAppearanceLibraryManager& libraries) : manager(libraries), reader(libraries) {}

    CAppearanceInstancePtr read()
    {
        const String file = std::exchange(error.place, {});
        const auto appearance = reader.Read(document.GetRoot(), error);
        if (!appearance)
            error.place.insert(0, file);
        return appearance;
    }

    const CAppearanceLibraryManager& manager;
    CAppearanceDocumentReader reader;
    CJsonDocument document;
    CParseError error;
};

CAppearanceParser::CAppearanceParser(const CAppearanceLibraryManager& manager) : m(std::make_unique<Private>(manager))
{
}

CAppearanceParser::~CAppearanceParser() = default;

CAppearanceInstancePtr CAppearanceParser::AppearanceFromFile(const std::wstring& path)
{
    m->error = {};
    return m->document.ParseFile(path, MaxDocumentBytes, m->error) ? m->read() : nullptr;
}

CAppearanceInstancePtr CAppearanceParser::AppearanceFromString(const String& text)
{
    m->error = {};
    if (text.size() > std::size_t(MaxDocumentBytes)) {
        Refuse(m->error, "has " + std::to_string(text.size()) + " bytes, more than a document may have");
        return {};
    }
    return m->document.Parse(text, m->error) ? m->read() : nullptr;
}

CAppearanceInstancePtr CAppearanceParser::AppearanceFromZipFile(const std::wstring& path)
{
    CParseError error;
    const auto appearance = ReadAppearanceArchive(*this, m->manager, path, error);
    m->error = appearance ? CParseError() : error;
    return appearance;
}

bool CAppearanceParser::AppearanceToZipFile(const CAppearanceInstancePtr& appearance, const std::wstring& path)
{
    CParseError error;
    const bool written = appearance ? WriteAppearanceArchive(*this, m->manager, *appearance, path, error)
                                    : Refuse(error, "there is no appearance to write");
    m->error = written ? CParseError() : error;
    return written;
}

String CAppearanceParser::AppearanceToString(const CAppearanceInstancePtr& appearance) const
{
    return appearance ? WriteAppearanceDocument(*appearance) : String();
}

std::unique_ptr<char[]> CAppearanceParser::AppearanceToBytes(const CAppearanceInstancePtr& appearance,
                                                             std::size_t& size) const
{
    const String text = AppearanceToString(appearance);
    size = text.size();
    if (text.empty())
        return {};
    auto bytes = std::make_unique<char[]>(size);
    std::memcpy(bytes.get(), text.data(), size);
    return bytes;
}

const CParseError& CAppearanceParser::GetLastError() const
{
    return m->error;
}

}  // namespace kiv
