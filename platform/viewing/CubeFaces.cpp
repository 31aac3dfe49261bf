#include "CubeFaces.h"

#include <algorithm>

namespace kiv {

namespace {

const char* const names[6] = {"back", "front", "left", "right", "top", "bottom"};

// The middle of the picture as a square of that side, without transparency, upside down.
QImage faceOf(const QImage& picture, int side)
{
    const int cut = std::min(picture.width(), picture.height());
    const QRect middle((picture.width() - cut) / 2, (picture.height() - cut) / 2, cut, cut);
    return picture.copy(middle)
        .convertToFormat(QImage::Format_RGB32)
        .scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .mirrored()
        .convertToFormat(QImage::Format_RGBA8888);
}

}  // namespace

bool CubeFacesOfSky(const std::array<QImage, 6>& pictures, int maxSide, CCubeFaces& faces, QString& reason)
{
    int side = std::min(maxSide, MaxSkySide);
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        const int own = std::min(pictures[i].width(), pictures[i].height());
        if (own == 0) {
            reason = QStringLiteral("the sky box has no picture for its face \"%1\"").arg(QLatin1String(names[i]));
            return false;
        }
        side = std::min(side, own);
    }
    // +x right, -x left, +y bottom, -y top, +z back, -z front.
    constexpr std::size_t order[6] = {3, 2, 5, 4, 0, 1};
    CCubeFaces made;
    for (std::size_t i = 0; i < made.size(); ++i) {
        made[i] = faceOf(pictures[order[i]], side);
        if (made[i].isNull()) {
            reason = QStringLiteral("there is no memory for the sky box");
            return false;
        }
    }
    faces = std::move(made);
    return true;
}

}  // namespace kiv
