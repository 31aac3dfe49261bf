#include "CubeImage.h"

#include "ParallelFor.h"
#include "Srgb.h"

#include <cmath>

namespace kiv {

namespace {

using Decoding = std::array<float, 256>;

Decoding makeDecoding()
{
    Decoding decoding;
    for (std::size_t i = 0; i < decoding.size(); ++i)
        decoding[i] = static_cast<float>(DecodeSrgb(static_cast<double>(i) / 255));
    return decoding;
}

// sRGB bytes to linear light.
const Decoding& decoding()
{
    static const Decoding table = makeDecoding();
    return table;
}

// The part of a line of `from` texels that each of `to` texels covers.
class Spans {
public:
    Spans(int from, int to) : m_from(from), m_ratio(static_cast<double>(from) / to) {}

    // Calls add(i, weight) for each texel under texel `out`; the weights add up to 1.
    template <typename Add>
    void cover(int out, const Add& add) const
    {
        const double begin = out * m_ratio, end = begin + m_ratio;
        for (int i = static_cast<int>(begin); i < m_from && i < end; ++i) {
            const double length = std::min(end, i + 1.0) - std::max(begin, static_cast<double>(i));
            if (length > 1e-9)
                add(i, static_cast<float>(length / m_ratio));
        }
    }

private:
    int m_from;
    double m_ratio;
};

// Adds a row of the picture, each texel times the weight.
void addRow(const QImage& picture, int row, float weight, std::vector<CLight>& sums)
{
    const uchar* bytes = picture.constScanLine(row);
    const Decoding& table = decoding();
    for (CLight& sum : sums) {
        sum += CLight{table[bytes[0]], table[bytes[1]], table[bytes[2]], 1} * weight;
        bytes += 4;
    }
}

}  // namespace

CVec3<float> CubeDirection(const CCubePlace& place)
{
    const float s = place.s, t = place.t;
    switch (place.face) {
    case 0:
        return {1, -t, -s};
    case 1:
        return {-1, -t, s};
    case 2:
        return {s, 1, t};
    case 3:
        return {s, -1, -t};
    case 4:
        return {s, -t, 1};
    default:
        return {-s, -t, -1};
    }
}

CCubeImage::CCubeImage(int size) : m_size(size), m_lights(6 * static_cast<std::size_t>(size + 2) * (size + 2))
{
}

CCubeImage::CCubeImage(const CCubeFaces& faces, int size) : CCubeImage(size)
{
    const Spans spans(faces[0].width(), size);
    ParallelFor(6 * size, [&](int job) {
        const int face = job / size, y = job % size;
        const QImage& picture = faces[static_cast<std::size_t>(face)];
        std::vector<CLight> sums(static_cast<std::size_t>(picture.width()));
        spans.cover(y, [&](int row, float weight) { addRow(picture, row, weight, sums); });
        for (int x = 0; x < size; ++x)
            spans.cover(x, [&](int i, float weight) { At(face, x, y) += sums[static_cast<std::size_t>(i)] * weight; });
    });
    FillBorders();
}

CCubeImage CCubeImage::Halved() const
{
    CCubeImage half(m_size / 2);
    for (int face = 0; face < 6; ++face) {
        for (int y = 0; y < half.m_size; ++y) {
            for (int x = 0; x < half.m_size; ++x) {
                CLight sum = At(face, 2 * x, 2 * y);
                sum += At(face, 2 * x + 1, 2 * y);
                sum += At(face, 2 * x, 2 * y + 1);
                sum += At(face, 2 * x + 1, 2 * y + 1);
                half.At(face, x, y) = sum * 0.25f;
            }
        }
    }
    half.FillBorders();
    return half;
}

// A border texel takes what its neighbour has where the plane of the face, continued, points to; at the corners, where
// three faces meet and no fourth texel exists, it takes their mean.
void CCubeImage::FillBorders()
{
    const int last = m_size - 1;
    const auto texelOf = [&](float s) {
        return std::clamp(static_cast<int>((s + 1) * 0.5f * static_cast<float>(m_size)), 0, last);
    };
    const auto fill = [&](int face, int x, int y) {
        const CCubePlace place = CubePlaceOf(CubeDirection({face, Centre(x), Centre(y)}));
        At(face, x, y) = At(place.face, texelOf(place.s), texelOf(place.t));
    };
    for (int face = 0; face < 6; ++face) {
        for (int i = 0; i < m_size; ++i) {
            fill(face, i, -1);
            fill(face, i, m_size);
            fill(face, -1, i);
            fill(face, m_size, i);
        }
        for (const int x : {-1, m_size}) {
            for (const int y : {-1, m_size}) {
                const int nearX = std::clamp(x, 0, last), nearY = std::clamp(y, 0, last);
                CLight sum = At(face, nearX, nearY);
                sum += At(face, x, nearY);
                sum += At(face, nearX, y);
                At(face, x, y) = sum * (1.0f / 3);
            }
        }
    }
}

}  // namespace kiv
