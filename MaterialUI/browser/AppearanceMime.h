#pragma once

#include <MaterialUIExport.h>

#include <kiv/AppearanceLibraryManager.h>

#include <QString>

#include <memory>

class QMimeData;

/// What travels with an appearance that is dragged out of a browser, for hosts that let it be dropped on their own
/// widgets. Within the process the id finds the appearance itself; elsewhere the document gives an equal one.
namespace AppearanceMime {

/// The id (UTF-8) and the document (UTF-8 JSON, without textures) of the appearance, which may not be null.
MATERIALUI_EXPORT std::unique_ptr<QMimeData> Make(const kiv::CAppearanceInstancePtr& appearance,
                                                  const kiv::CAppearanceLibraryManager& manager);

/// Whether the data are those of an appearance. Null is none.
MATERIALUI_EXPORT bool IsIn(const QMimeData* data);
/// The id as libraries know it; empty when there is none.
MATERIALUI_EXPORT kiv::String IdOf(const QMimeData* data);
/// The text for kiv::CAppearanceParser::AppearanceFromString; empty when there is none. It may come from another
/// program, so the parser's answer has to be looked at.
MATERIALUI_EXPORT kiv::String DocumentOf(const QMimeData* data);

}  // namespace AppearanceMime
