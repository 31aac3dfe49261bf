#include "WrappedSmoothing.h"

#include <algorithm>
#include <cmath>

namespace kiv {

namespace {

// Three standard deviations; what is left out weighs 0.3 % and is made up for.
std::vector<float> gaussianWeights(double sigma)
{
    const int reach = int(std::ceil(3 * sigma));
    std::vector<double> weights{1};
    double sum = 1;
    for (int i = 1; i <= reach; ++i) {
        weights.push_back(std::exp(-0.5 * i * i / (sigma * sigma)));
        sum += 2 * weights.back();
    }
    std::vector<float> result;
    result.reserve(weights.size());
    for (const double weight : weights)
        result.push_back(float(weight / sum));
    return result;
}

int wrapped(int place, int size)
{
    return (place % size + size) % size;
}

// Rec. 709 weights on the values as stored.
void readBrightness(const unsigned char* rgba, int width, float* out)
{
    for (int i = 0; i < width; ++i)
        out[i] = 0.2126f * float(rgba[4 * i]) + 0.7152f * float(rgba[4 * i + 1]) + 0.0722f * float(rgba[4 * i + 2]);
}

void scaleTo(float* __restrict out, const float* row, float weight, int count)
{
    for (int i = 0; i < count; ++i)
        out[i] = row[i] * weight;
}

// Two pairs at a time, which halves the traffic on `out`.
void addPairs(float* __restrict out, const float* a1, const float* a2, float weightA, const float* b1, const float* b2,
              float weightB, int count)
{
    for (int i = 0; i < count; ++i)
        out[i] += (a1[i] + a2[i]) * weightA + (b1[i] + b2[i]) * weightB;
}

// The weighted sum of rows on both sides of a middle one; `at(i)` is the row i places from it.
template <typename RowAt>
void smooth(float* out, const std::vector<float>& weights, int count, const RowAt& at)
{
    const int reach = int(weights.size()) - 1;
    scaleTo(out, at(0), weights[0], count);
    for (int i = 1; i <= reach; i += 2) {
        const int other = std::min(i + 1, reach);
        const float weight = other > i ? weights[std::size_t(other)] : 0;
        addPairs(out, at(-i), at(i), weights[std::size_t(i)], at(-other), at(other), weight, count);
    }
}

}  // namespace

CWrappedSmoothing::CWrappedSmoothing(const CPixels& picture, double sigma, int firstRow)
    : m_picture(picture), m_weights(gaussianWeights(std::min(sigma, LargestSigma)))
{
    const std::size_t reach = m_weights.size() - 1;
    m_brightness.resize(std::size_t(picture.width) + 2 * reach);
    m_rows.assign(2 * reach + 1, std::vector<float>(std::size_t(picture.width)));
    m_nextRead = firstRow - int(reach);
    for (std::size_t i = 0; i < 2 * reach; ++i)
        readRow();
}

// Takes the place of the oldest row.
void CWrappedSmoothing::readRow()
{
    const int width = m_picture.width;
    const int reach = int(m_weights.size()) - 1;
    const std::size_t row = std::size_t(wrapped(m_nextRead++, m_picture.height));
    float* middle = m_brightness.data() + reach;
    readBrightness(m_picture.rgba + row * std::size_t(width) * 4, width, middle);
    for (int i = 1; i <= reach; ++i) {
        middle[-i] = middle[wrapped(-i, width)];
        middle[width - 1 + i] = middle[(i - 1) % width];
    }
    smooth(m_rows[m_oldest].data(), m_weights, width, [middle](int i) { return middle + i; });
    m_oldest = (m_oldest + 1) % m_rows.size();
}

void CWrappedSmoothing::NextRow(float* out)
{
    readRow();
    const int width = m_picture.width;
    const int reach = int(m_weights.size()) - 1;
    smooth(out + 1, m_weights, width,
           [&](int i) { return m_rows[(m_oldest + std::size_t(reach + i)) % m_rows.size()].data(); });
    out[0] = out[width];
    out[width + 1] = out[1];
}

}  // namespace kiv
