#pragma once

#include "TextureCache.h"

#include <kiv/AppearanceLibraryManager.h>

#include <QBrush>
#include <QPointF>
#include <QTransform>

/// How metres become pixels: y points up in the building and down on the screen.
struct ElevationScale {
    double pixelsPerMetre = 50;
    QPointF origin;  ///< the pixel of the building's point (0, 0)

    QTransform toPixels() const { return {pixelsPerMetre, 0, 0, -pixelsPerMetre, origin.x(), origin.y()}; }
    QPointF toMetres(const QPointF& pixel) const { return toPixels().inverted().map(pixel); }
};

/// What a surface of one material is painted with.
struct MaterialLook {
    QBrush brush;
    double opacity = 1;
    double gloss = 0;  ///< 0 matt to 1 mirror
};

/// Turns appearances into brushes: the texture in its real size, or the colour.
class MaterialFill {
public:
    /// The manager is borrowed.
    MaterialFill(const kiv::CAppearanceLibraryManager& manager, TextureCache& textures)
        : m_manager(manager), m_textures(textures)
    {
    }

    /// `tilt`: the share of its height in which a surface that lies down is seen.
    MaterialLook look(const kiv::CAppearanceInstance& appearance, const ElevationScale& scale, double tilt = 1) const;

    /// Width and height of one repeat of the diffuse texture in metres; null when no texture is in use.
    QSizeF repeatSize(const kiv::CAppearanceInstance& appearance) const;

private:
    QBrush textureBrush(const kiv::CAppearanceInstance& texture, const ElevationScale& scale, double tilt) const;
    static QTransform placementOf(const kiv::CAppearanceInstance& texture);
    QSizeF sizeOf(const kiv::CAppearanceInstance& texture) const;
    double metresPerUnit() const;

    const kiv::CAppearanceLibraryManager& m_manager;
    TextureCache& m_textures;
};
