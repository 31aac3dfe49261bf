#pragma once

#include <vector>

namespace kiv {

/// Rows of four bytes a pixel (red, green, blue, alpha), not owned.
struct CPixels {
    const unsigned char* rgba = nullptr;
    int width = 0;
    int height = 0;
};

/// Smooths a picture's brightness (0..255) row by row, as if the picture went on in all directions. Keeps no more rows
/// than reach into the one that is asked for.
class CWrappedSmoothing {
public:
    /// Standard deviations (pixels) above this count as this.
    static constexpr double LargestSigma = 160;

    /// The first row that NextRow gives; may lie outside the picture.
    CWrappedSmoothing(const CPixels& picture, double sigma, int firstRow);

    /// Writes width + 2 numbers: the row, with its last one before and its first one after it.
    void NextRow(float* out);

private:
    void readRow();

    CPixels m_picture;
    std::vector<float> m_weights;  // of the middle and its neighbours on one side
    int m_nextRead;
    std::vector<float> m_brightness;         // one row, continued on both sides
    std::vector<std::vector<float>> m_rows;  // smoothed along the row, the oldest first from m_oldest
    std::size_t m_oldest = 0;
};

}  // namespace kiv
