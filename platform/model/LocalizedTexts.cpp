#include "LocalizedTexts.h"

#include "JsonDocument.h"
#include "NarrowText.h"

namespace kiv {

namespace {

constexpr long long MaxTextFileBytes = 16LL * 1024 * 1024;

bool refuseAt(CParseError& error, const String& place, String reason)
{
    error.place += place;
    return Refuse(error, std::move(reason));
}

bool readTexts(simdjson::dom::element root, const char* group, std::map<String, String>& texts, CParseError& error)
{
    const String place = PointerSegment(group);
    const auto json = root.at_key(group);
    if (json.error() == simdjson::NO_SUCH_FIELD)
        return true;
    simdjson::dom::object fields;
    if (json.get(fields))
        return refuseAt(error, place, "expected an object of texts");
    for (const auto field : fields) {
        std::string_view utf8;
        if (field.value.get(utf8))
            return refuseAt(error, place + PointerSegment(field.key), "expected a text");
        texts[NarrowFromUtf8(field.key)] = NarrowFromUtf8(utf8);
    }
    return true;
}

}  // namespace

bool CLocalizedTexts::Load(const std::wstring& path, CParseError& error)
{
    error = {};
    CJsonDocument document;
    if (!document.ParseFile(path, MaxTextFileBytes, error))
        return false;
    std::string_view language;
    if (document.GetRoot().at_key("language").get(language) || language.empty())
        return refuseAt(error, "/language", "a text file is an object that names its language");
    Language texts;
    if (!readTexts(document.GetRoot(), "appearance", texts.appearance, error) ||
        !readTexts(document.GetRoot(), "ui", texts.ui, error))
        return false;
    Language& known = m_languages[String(language)];
    texts.appearance.merge(known.appearance);
    texts.ui.merge(known.ui);
    known = std::move(texts);
    error = {};
    return true;
}

String CLocalizedTexts::Appearance(const String& stored) const
{
    return Shown(&Language::appearance, stored);
}

String CLocalizedTexts::Ui(const String& stored) const
{
    return Shown(&Language::ui, stored);
}

String CLocalizedTexts::Shown(Texts Language::*group, const String& stored) const
{
    const auto language = m_languages.find(m_language);
    if (language == m_languages.end())
        return stored;
    const Texts& texts = language->second.*group;
    const auto found = texts.find(stored);
    return found == texts.end() ? stored : found->second;
}

}  // namespace kiv
