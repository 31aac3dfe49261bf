#include "MaterialFill.h"

#include <kiv/TextureTransform.h>

#include <QtMath>

using kiv::CAppearanceInstance;
using kiv::CVec2;

namespace {

constexpr double SmallestRepeat = 0.01;  // units; what is smaller could not be told from a colour

QColor colourOf(const CAppearanceInstance& appearance)
{
    const kiv::CVec4<float> c = appearance.GetDiffuse();
    const auto part = [](float value) { return qBound(0.0, double(value), 1.0); };
    return QColor::fromRgbF(part(c.x), part(c.y), part(c.z));
}

}  // namespace

MaterialLook MaterialFill::look(const CAppearanceInstance& appearance, const ElevationScale& scale, double tilt) const
{
    MaterialLook look;
    look.opacity = qBound(0.0, double(appearance.GetTransparent()), 1.0);
    look.gloss = qBound(0.0, 1 - double(appearance.ValueOr<float>("roughness", 1)), 1.0);
    const kiv::CAppearanceInstancePtr texture = appearance.GetDiffuseTexture();
    if (appearance.GetUseDiffuseTexture() && texture)
        look.brush = textureBrush(*texture, scale, tilt);
    if (look.brush.style() == Qt::NoBrush)
        look.brush = colourOf(appearance);
    return look;
}

QSizeF MaterialFill::repeatSize(const CAppearanceInstance& appearance) const
{
    const kiv::CAppearanceInstancePtr texture = appearance.GetDiffuseTexture();
    const bool used = appearance.GetUseDiffuseTexture() && texture && !texture->GetTextureFile().empty();
    return used ? sizeOf(*texture) : QSizeF();
}

QBrush MaterialFill::textureBrush(const CAppearanceInstance& texture, const ElevationScale& scale, double tilt) const
{
    if (texture.GetTextureFile().empty())
        return {};
    const QSizeF size = sizeOf(texture) * scale.pixelsPerMetre;
    const QString file = QString::fromLocal8Bit(m_manager.ResolvePath(texture.GetTextureFile()).c_str());
    const QImage tile = m_textures.tile(file, {qRound(size.width()), qRound(size.height() * tilt)});
    if (tile.isNull())
        return {};
    const double unit = metresPerUnit() * scale.pixelsPerMetre;
    QTransform onSurface = QTransform::fromTranslate(scale.origin.x(), scale.origin.y());
    onSurface.scale(unit, -unit * tilt);
    const QTransform toPicture = QTransform::fromScale(1.0 / tile.width(), -1.0 / tile.height());
    QBrush brush(tile);
    brush.setTransform(toPicture * placementOf(texture).inverted() * onSurface);
    return brush;
}

// From a place on the surface, in units with y up, to one on the picture.
QTransform MaterialFill::placementOf(const CAppearanceInstance& texture)
{
    const auto m =
        kiv::TextureTransform(texture.ValueOr<float>("rotation", 0), texture.ValueOr("scale", CVec2<float>(1, 1)),
                              texture.ValueOr("offset", CVec2<float>(0, 0)));
    return {double(m(0, 0)), double(m(1, 0)), double(m(0, 1)), double(m(1, 1)), double(m(0, 2)), double(m(1, 2))};
}

QSizeF MaterialFill::sizeOf(const CAppearanceInstance& texture) const
{
    const auto stored = texture.ValueOr("scale", CVec2<float>(1, 1));
    const auto side = [](float value) { return qMax(qAbs(double(value)), SmallestRepeat); };
    return QSizeF(side(stored.x), side(stored.y)) * metresPerUnit();
}

double MaterialFill::metresPerUnit() const
{
    const kiv::String& unit = m_manager.GetTextureUnit();
    return unit == "mm" ? 0.001 : unit == "cm" ? 0.01 : 1;
}
