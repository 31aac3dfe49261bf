#include "ParallelFor.h"
#include "WrappedSmoothing.h"

#include <kiv/Image.h>
#include <kiv/TextureManager.h>

#include <algorithm>
#include <cmath>
#include <thread>

namespace kiv {

namespace {

constexpr double ReferenceWidth = 1024;  // pixels that the smoothing is given for
constexpr double SteepestScale = 1e6;    // its square is still a number

/// A picture's heights become normals, a range of rows at a time.
class CNormalMapper {
public:
    CNormalMapper(const CPixels& heights, double scale, double sigma, CImage& normals)
        : m_heights(heights), m_scale(float(std::min(scale, SteepestScale))), m_sigma(sigma), m_normals(normals)
    {
    }

    void Run() const
    {
        const int ranges = std::min(int(std::thread::hardware_concurrency()), m_heights.height / SmallestRange);
        const int count = std::clamp(ranges, 1, MostRanges);
        ParallelFor(count, [&](int range) { RunRange(range, count); });
    }

private:
    static constexpr int SmallestRange = 32;  // rows; each range smooths some more on both sides
    static constexpr int MostRanges = 8;

    void RunRange(int range, int count) const
    {
        const int end = int(static_cast<long long>(m_heights.height) * (range + 1) / count);
        const int begin = int(static_cast<long long>(m_heights.height) * range / count);
        CWrappedSmoothing smoothing(m_heights, m_sigma, begin - 1);
        // Three rows at a time, each with its own last pixel before and its first one after it.
        std::vector<float> rows[3];
        for (std::vector<float>& row : rows)
            row.resize(std::size_t(m_heights.width) + 2);
        smoothing.NextRow(rows[0].data());
        smoothing.NextRow(rows[1].data());
        for (int row = begin; row < end; ++row) {
            smoothing.NextRow(rows[2].data());
            WriteRow(rows[0].data() + 1, rows[1].data() + 1, rows[2].data() + 1, row);
            std::rotate(rows, rows + 1, rows + 3);
        }
    }

    // Sobel's differences: across the pixel, the mean of three neighbouring rows (columns) with weights 1, 2, 1.
    void WriteRow(const float* above, const float* here, const float* below, int row) const
    {
        const float slope = m_scale / (8 * 255.f);
        const int width = m_heights.width;
        unsigned char* out = m_normals.GetData() + std::size_t(row) * std::size_t(width) * 4;
        for (int i = 0; i < width; ++i) {
            const float right = above[i + 1] + 2 * here[i + 1] + below[i + 1];
            const float left = above[i - 1] + 2 * here[i - 1] + below[i - 1];
            const float upper = above[i - 1] + 2 * above[i] + above[i + 1];
            const float lower = below[i - 1] + 2 * below[i] + below[i + 1];
            const float x = (left - right) * slope;
            const float y = (lower - upper) * slope;
            const float half = 127.5f / std::sqrt(x * x + y * y + 1);
            out[4 * i] = static_cast<unsigned char>(int(x * half + 128));
            out[4 * i + 1] = static_cast<unsigned char>(int(y * half + 128));
            out[4 * i + 2] = static_cast<unsigned char>(int(half + 128));
            out[4 * i + 3] = 255;
        }
    }

    CPixels m_heights;
    float m_scale;
    double m_sigma;
    CImage& m_normals;
};

bool isUsable(double value)
{
    return std::isfinite(value) && value >= 0;
}

}  // namespace

std::shared_ptr<CImage> CImage::CreateNormalMapFromFile(const std::wstring& path, double scale, double blur)
{
    if (!isUsable(scale) || !isUsable(blur))
        return nullptr;
    std::shared_ptr<CImage> normals;
    const bool isRead = CTextureManager::TextureHelper(path, [&](int width, int height, const unsigned char* rgba) {
        normals = std::make_shared<CImage>(width, height);
        CNormalMapper({rgba, width, height}, scale, blur * width / ReferenceWidth, *normals).Run();
    });
    return isRead ? normals : nullptr;
}

}  // namespace kiv
