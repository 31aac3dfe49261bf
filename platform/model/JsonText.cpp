#include "JsonText.h"

#include <charconv>
#include <cmath>

namespace kiv {

namespace {

void appendEscaped(String& json, char c)
{
    static const std::string_view plain = "\b\f\n\r\t\"\\";
    static const std::string_view letters = "bfnrt\"\\";
    static const char digits[] = "0123456789abcdef";
    const auto found = plain.find(c);
    json += '\\';
    if (found != std::string_view::npos) {
        json += letters[found];
        return;
    }
    json += "u00";
    json += digits[static_cast<unsigned char>(c) >> 4];
    json += digits[c & 15];
}

bool mustEscape(char c)
{
    return static_cast<unsigned char>(c) < 0x20 || c == '"' || c == '\\';
}

template <typename T>
void appendReal(String& json, T value)
{
    if (!std::isfinite(value)) {
        json += "null";
        return;
    }
    char text[32];
    const auto end = std::to_chars(text, text + sizeof(text), value).ptr;
    const std::string_view digits(text, std::size_t(end - text));
    json += digits;
    if (digits.find_first_of(".e") == std::string_view::npos)
        json += ".0";
}

}  // namespace

void AppendJsonString(String& json, std::string_view utf8)
{
    json += '"';
    std::size_t done = 0;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        if (!mustEscape(utf8[i]))
            continue;
        json.append(utf8, done, i - done);
        appendEscaped(json, utf8[i]);
        done = i + 1;
    }
    json.append(utf8, done, utf8.size() - done);
    json += '"';
}

void AppendJsonNumber(String& json, float value)
{
    // The one float, of all, whose shortest text reads as its neighbour when it is read as a double first.
    constexpr float twiceRounded = 7.038531e-26f;
    if (std::abs(value) == twiceRounded)
        appendReal(json, double(value));
    else
        appendReal(json, value);
}

void AppendJsonNumber(String& json, double value)
{
    appendReal(json, value);
}

void AppendJsonNumber(String& json, int value)
{
    json += std::to_string(value);
}

}  // namespace kiv
