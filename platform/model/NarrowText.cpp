#include "NarrowText.h"

#include <QString>
#include <QTextCodec>

#include <simdjson.h>

namespace kiv {

namespace {

bool isNarrowUtf8()
{
    constexpr int Utf8Mib = 106;
    const QTextCodec* codec = QTextCodec::codecForLocale();
    return !codec || codec->mibEnum() == Utf8Mib;
}

}  // namespace

String NarrowFromUtf8(std::string_view utf8)
{
    if (isNarrowUtf8())
        return String(utf8);
    return QString::fromUtf8(utf8.data(), int(utf8.size())).toLocal8Bit().toStdString();
}

String Utf8FromNarrow(const String& narrow)
{
    if (isNarrowUtf8() && simdjson::validate_utf8(narrow))
        return narrow;
    return QString::fromLocal8Bit(narrow.data(), int(narrow.size())).toUtf8().toStdString();
}

}  // namespace kiv
