#pragma once

#include <kiv/ParseError.h>

#include <QByteArray>

#include <simdjson.h>

#include <string_view>

namespace kiv {

/// A parsed JSON text. Its elements live until the next parse or the end of the object; the buffers are reused.
class CJsonDocument {
public:
    /// A leading byte order mark is skipped. False with the reason.
    bool Parse(std::string_view text, CParseError& error);
    /// The same for a regular file (stored path); the error's place is the file's name.
    bool ParseFile(const std::wstring& path, long long maxBytes, CParseError& error);

    simdjson::dom::element GetRoot() const { return m_root; }

private:
    bool ParsePadded(std::string_view text, CParseError& error);

    simdjson::dom::parser m_parser;
    simdjson::dom::element m_root;
    QByteArray m_buffer;
};

/// The last segment of a stored path, as the place of an error.
String FilePlace(const std::wstring& path);

/// Sets the reason and answers false.
bool Refuse(CParseError& error, String reason);

/// A segment of a JSON pointer, with its leading "/"; put before the place of an error on the way out.
String PointerSegment(std::string_view key);

}  // namespace kiv
