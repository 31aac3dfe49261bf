#pragma once

#include <kiv/AppearanceLibraryManager.h>

#include <QString>

/// Colours, sizes and names that make up the look of a browser.
namespace BrowserLook {

/// Of the table's picture column, in pixels: with rows of 40 wide enough to judge a material.
constexpr int PictureWidth = 64;
/// Of the table, as its form says, in pixels.
constexpr int RowHeight = 40;

extern const char* const ControlStyle;
extern const char* const TreeStyle;
extern const char* const TableStyle;
extern const char* const HeaderStyle;

/// What a library is called in the tree, and what the names of its browser's widgets begin with.
struct CLibraryLook {
    QString text;
    QString prefix;
};

CLibraryLook LookOf(const kiv::String& libraryName, const kiv::CAppearanceLibraryManager& manager);

}  // namespace BrowserLook
