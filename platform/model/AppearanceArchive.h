#pragma once

#include <kiv/AppearanceParser.h>

namespace kiv {

/// Appearance archives (".ggm"): a zip with the document as "appearance.json" and the textures that it names as
/// "textures/<name>". The operations of CAppearanceParser say what they keep to.
CAppearanceInstancePtr ReadAppearanceArchive(CAppearanceParser& parser, const CAppearanceLibraryManager& manager,
                                             const std::wstring& path, CParseError& error);
bool WriteAppearanceArchive(const CAppearanceParser& parser, const CAppearanceLibraryManager& manager,
                            const CAppearanceInstance& appearance, const std::wstring& path, CParseError& error);

}  // namespace kiv
