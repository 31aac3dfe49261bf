#pragma once

#include <memory>
#include <string>
#include <vector>

namespace kiv {

/// A picture in memory: rows from the top, four bytes a pixel (red, green, blue, alpha; not premultiplied).
class CImage {
public:
    CImage() = default;
    /// Transparent black. Sizes below 1, and more than CTextureManager::MaxPixels, give an empty picture.
    CImage(int width, int height);

    bool IsEmpty() const { return m_pixels.empty(); }
    int GetWidth() const { return m_width; }
    int GetHeight() const { return m_height; }
    const unsigned char* GetData() const { return m_pixels.data(); }
    unsigned char* GetData() { return m_pixels.data(); }

    /// Reads what CTextureManager::TextureHelper reads. False with the picture unchanged. Paths are paths of this
    /// machine.
    bool LoadFromFile(const std::wstring& path);
    /// Writes a PNG, JPEG or BMP file, chosen by the name's ending, beside itself and renames it into place.
    bool SaveToFile(const std::wstring& path) const;

    /// The normal map of a picture whose brightness is taken for height: brighter is higher. Red points right, green
    /// up, blue out of the picture, each 0..255 for -1..1. `scale` is the height of white over black, in pixels; `blur`
    /// is the standard deviation, in pixels at 1024 pixels of width and in proportion otherwise, of the smoothing done
    /// before, so that grain does not become relief. Both wrap at the edges: a seamless picture gives a seamless map.
    /// Full resolution. Smoothing by more than 160 of the picture's own pixels counts as that. Null for a file that
    /// cannot be read and for numbers that are not finite or negative. Blocking; any thread, uses several.
    static std::shared_ptr<CImage> CreateNormalMapFromFile(const std::wstring& path, double scale, double blur);

private:
    int m_width = 0;
    int m_height = 0;
    std::vector<unsigned char> m_pixels;
};

using CImagePtr = std::shared_ptr<CImage>;

}  // namespace kiv
