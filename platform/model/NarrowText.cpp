#include "NarrowText.h"

#include <QString>
#include <QTextCodec>

#include <simdjson.h>

#include <cstring>

namespace kiv {

namespace {

bool isNarrowUtf8()
{
    constexpr int Utf8Mib = 106;
    const QTextCodec* codec = QTextCodec::codecForLocale();
    return !codec || codec->mibEnum() == Utf8Mib;
}

/// ASCII is the same text in UTF-8 and in every local 8-bit codec.
bool isAscii(std::string_view text)
{
    constexpr std::uint64_t HighBits = 0x8080808080808080;
    std::size_t i = 0;
    for (std::uint64_t word = 0; i + sizeof(word) <= text.size(); i += sizeof(word)) {
        std::memcpy(&word, text.data() + i, sizeof(word));
        if (word & HighBits)
            return false;
    }
    for (; i < text.size(); ++i) {
        if (text[i] & 0x80)
            return false;
    }
    return true;
}

}  // namespace

String NarrowFromUtf8(std::string_view utf8)
{
    if (isNarrowUtf8() || isAscii(utf8))
        return String(utf8);
    return QString::fromUtf8(utf8.data(), int(utf8.size())).toLocal8Bit().toStdString();
}

String Utf8FromNarrow(const String& narrow)
{
    if (isAscii(narrow) || (isNarrowUtf8() && simdjson::validate_utf8(narrow)))
        return narrow;
    return QString::fromLocal8Bit(narrow.data(), int(narrow.size())).toUtf8().toStdString();
}

}  // namespace kiv
