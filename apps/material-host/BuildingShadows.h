#pragma once

#include "Building.h"

#include <QHash>

/// Where the sun does not reach, for each element: the outlines of what stands in front of it, shifted along the sun's
/// rays and cut to the element. Computed once for a building.
class BuildingShadows {
public:
    explicit BuildingShadows(const Building& building);

    /// In metres; empty when the whole element is in the sun.
    QPainterPath on(const QString& elementId) const { return m_shadows.value(elementId); }

private:
    QHash<QString, QPainterPath> m_shadows;
};
