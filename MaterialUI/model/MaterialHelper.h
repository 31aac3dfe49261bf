#pragma once

#include "MaterialUIExport.h"

#include <kiv/MaterialLibrary.h>

#include <QPixmap>
#include <QString>

#include <string>

namespace kiv {

/// Stateless helpers that the widgets share. Nothing throws: failures are empty strings, null pixmaps and pointers, or
/// false. All are reentrant but AddFavorite and ScaledPicture, which belong to the user-interface thread. Those that
/// make pixmaps need the application object.
class MATERIALUI_EXPORT CMaterialHelper {
public:
    /// A name for a copy of `name`: with Brick and Brick_1 in "Customer Library", Brick gives Brick_2. Other libraries
    /// are not considered, and bases are compared ignoring case. A wanted number that is not in use collapses to the
    /// base alone, which may itself be in use: pass the name that is being copied, not a guess at a free one.
    static QString GenerateNoRepeatName(CAppearanceLibraryManager& manager, const QString& name);

    /// Splits Brick_3 into Brick and 3. What has no "_" behind its first character followed by an integer (a sign is
    /// accepted) is all base, with number 0.
    static void SeparateName(const QString& name, QString& base, int& number);

    /// SHA-1 (FIPS 180-1) of the bytes as 40 lower-case hexadecimal digits.
    static std::string HashBytes(const char* data, unsigned long long size);

    /// "JPG", "BMP" or "PNG" by the first bytes of the file, whatever its name; empty for anything else.
    static QString GetPictureRealType(const QString& path);
    /// Whether the file can be a texture: exactly when GetPictureRealType knows it.
    static bool CheckTextureFileValidity(const QString& path);

    /// A copy of the picture with both sides snapped by GetPictureScaledSize (aspect ratio not kept, nearest pixel), in
    /// a temporary file of the picture's own format that the caller owns. Its name; empty when it cannot be read or
    /// saved.
    static QString ScaledPicture(const QString& path);

    /// Snaps a picture side to a power of two, downwards, from 4 to 512. Kept with its odd ends, on which stored
    /// pictures rely: 1 to 3 give 128, negative sizes 4. A size of 0 must not be passed.
    static int GetPictureScaledSize(int size);

    /// A thumbnail that fits 128 x 128 (aspect ratio kept, nearest pixel) where the viewing library decodes the file;
    /// else the picture as QPixmap reads it, unscaled. Null for an empty path and for what is no picture.
    static QPixmap GetTextureIcon(const QString& path);

    /// Whether all texture files are on this machine: under the texture library path, or at the stored path itself.
    /// An appearance without cloud flag is always complete.
    static bool CheckResourceComplete(const CAppearanceInstancePtr& appearance, CAppearanceLibraryManager& manager);

    /// Stores a copy of the appearance, of the type that the category names, below the favourite library path: the
    /// document under its own digest in "Favorite Library", its textures under theirs in "UserLib Textures". A message
    /// box tells of an identical favourite, and of a file that cannot be read or written and why; then nothing of it is
    /// kept. The copy, which belongs to no library yet, or null.
    static CAppearanceInstancePtr AddFavorite(const CAppearanceInstancePtr& source, const std::string& category,
                                              CAppearanceLibraryManager& manager, CMaterialLibrary* library);
};

}  // namespace kiv
