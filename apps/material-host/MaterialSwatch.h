#pragma once

#include "MaterialFill.h"

#include <QPixmap>

/// A picture of a material as large as asked for: about one repeat of its texture, or its colour, over a chequered
/// ground when light passes through it.
class MaterialSwatch {
public:
    explicit MaterialSwatch(const MaterialFill& fill) : m_fill(fill) {}

    QPixmap picture(const kiv::CAppearanceInstance& appearance, const QSize& size, qreal devicePixelRatio) const;

private:
    const MaterialFill& m_fill;
};
