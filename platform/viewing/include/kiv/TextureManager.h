#pragma once

#include <functional>
#include <string>

namespace kiv {

/// Access to texture files, and to the textures that the viewers of this process keep.
class CTextureManager {
public:
    /// Receives a decoded picture: width and height in pixels (at least 1), and width * height pixels of four bytes
    /// (red, green, blue, alpha; not premultiplied), rows top to bottom without padding. The bytes live only during
    /// the call.
    using DecodedCallback = std::function<void(int width, int height, const unsigned char* rgba)>;

    /// Largest picture that is decoded, in pixels (16,384 x 16 and 8,192 x 8,192 pass, 30,000 x 30,000 does not).
    static constexpr long long MaxPixels = 64LL * 1024 * 1024;

    /// Decodes the picture file at `path` (a path of this machine) and hands it to `callback` once.
    /// False, without a call, for anything that is not a regular file (a folder, a device, a pipe), that is not a
    /// picture of a known format whatever its name says, that has more than MaxPixels, or that is damaged.
    /// Reads PNG, JPEG and BMP, and what else Qt's image plugins read; told apart by content, not by name.
    /// Blocking; reentrant, any thread.
    static bool TextureHelper(const std::wstring& path, const DecodedCallback& callback);

    /// Lets go of all textures of all viewers. What is still shown is read again. User-interface thread.
    static void ReleaseTextures();
};

}  // namespace kiv
