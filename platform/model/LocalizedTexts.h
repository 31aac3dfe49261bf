#pragma once

#include <kiv/ParseError.h>

#include <map>

namespace kiv {

/// Display texts by language and stored text.
class CLocalizedTexts {
public:
    /// Adds a text file; CAppearanceLibraryManager::LoadTexts says what it looks like.
    bool Load(const std::wstring& path, CParseError& error);

    const String& GetLanguage() const { return m_language; }
    void SetLanguage(const String& language) { m_language = language; }

    /// The text itself where the language has none for it.
    String Appearance(const String& stored) const;
    String Ui(const String& stored) const;

private:
    using Texts = std::map<String, String>;
    struct Language {
        Texts appearance;
        Texts ui;
    };

    String Shown(Texts Language::*group, const String& stored) const;

    std::map<String, Language> m_languages;
    String m_language = "zh";
};

}  // namespace kiv
