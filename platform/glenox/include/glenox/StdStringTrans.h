#pragma once

#include <string>

namespace kiv {

/// Conversion between narrow (local 8-bit) and wide text.
///
/// Narrow text is in the codec that QTextCodec::codecForLocale() answers, so that it agrees with
/// QString::fromLocal8Bit() everywhere in the process. Executables of this repository set that codec to UTF-8.
/// What cannot be represented in the target becomes the codec's replacement character. Any thread.
class GStdStringTrans {
public:
    static std::wstring StringToWString(const std::string& narrow);
    static std::string WStringToString(const std::wstring& wide);
};

}  // namespace kiv
