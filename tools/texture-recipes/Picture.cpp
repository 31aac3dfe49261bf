#include "Picture.h"

namespace {

int toByte(float value)
{
    return int(std::lround(clamp01(value) * 255));
}

}  // namespace

void Picture::fill(const std::function<Sample(float, float)>& sampler)
{
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const Sample sample = sampler((float(x) + 0.5f) / float(size), (float(y) + 0.5f) / float(size));
            colors[index(x, y)] = sample.color;
            heights[index(x, y)] = sample.height;
        }
    }
}

QImage Picture::color() const
{
    QImage image(size, size, QImage::Format_RGB888);
    for (int y = 0; y < size; ++y) {
        uchar* line = image.scanLine(y);
        for (int x = 0; x < size; ++x) {
            const Rgb& c = colors[index(x, y)];
            *line++ = uchar(toByte(c.r));
            *line++ = uchar(toByte(c.g));
            *line++ = uchar(toByte(c.b));
        }
    }
    return image;
}

QImage Picture::normals(float strength) const
{
    const auto at = [this](int x, int y) { return heights[index((x + size) % size, (y + size) % size)]; };
    QImage image(size, size, QImage::Format_RGB888);
    const float scale = strength * float(size) / 512.0f / 2;
    for (int y = 0; y < size; ++y) {
        uchar* line = image.scanLine(y);
        for (int x = 0; x < size; ++x) {
            const float dx = (at(x - 1, y) - at(x + 1, y)) * scale;
            const float dy = (at(x, y + 1) - at(x, y - 1)) * scale;
            const float length = std::sqrt(dx * dx + dy * dy + 1);
            *line++ = uchar(toByte(dx / length / 2 + 0.5f));
            *line++ = uchar(toByte(dy / length / 2 + 0.5f));
            *line++ = uchar(toByte(1 / length / 2 + 0.5f));
        }
    }
    return image;
}
