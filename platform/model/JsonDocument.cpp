#include "JsonDocument.h"

#include <glenox/StdStringTrans.h>
#include <kiv/system/StoredPath.h>

#include <cstring>

namespace kiv {

namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

std::string_view withoutMark(std::string_view text)
{
    return text.substr(0, ByteOrderMark.size()) == ByteOrderMark ? text.substr(ByteOrderMark.size()) : text;
}

}  // namespace

bool CJsonDocument::Parse(std::string_view text, CParseError& error)
{
    const int needed = int(text.size() + simdjson::SIMDJSON_PADDING);
    if (m_buffer.size() < needed)
        m_buffer.resize(needed);
    std::memcpy(m_buffer.data(), text.data(), text.size());
    return ParsePadded({m_buffer.constData(), text.size()}, error);
}

bool CJsonDocument::ParseFile(const std::wstring& path, long long maxBytes, CParseError& error)
{
    QString reason;
    error.place = FilePlace(path);
    if (!system::ReadWholeFile(system::NativePath(path), maxBytes, m_buffer, reason))
        return Refuse(error, reason.toLocal8Bit().toStdString());
    const int size = m_buffer.size();
    m_buffer.append(int(simdjson::SIMDJSON_PADDING), '\0');
    return ParsePadded({m_buffer.constData(), std::size_t(size)}, error);
}

bool CJsonDocument::ParsePadded(std::string_view text, CParseError& error)
{
    text = withoutMark(text);
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    if (const auto code = m_parser.parse(bytes, text.size(), false).get(m_root))
        return Refuse(error, String("no valid JSON: ") + simdjson::error_message(code));
    return true;
}

String FilePlace(const std::wstring& path)
{
    return GStdStringTrans::WStringToString(system::LastSegment(path));
}

bool Refuse(CParseError& error, String reason)
{
    error.reason = std::move(reason);
    return false;
}

String PointerSegment(std::string_view key)
{
    String segment = "/";
    for (const char c : key) {
        if (c == '~')
            segment += "~0";
        else if (c == '/')
            segment += "~1";
        else
            segment += c;
    }
    return segment;
}

}  // namespace kiv
