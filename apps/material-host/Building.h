#pragma once

#include <QColor>
#include <QJsonObject>
#include <QPainterPath>
#include <QString>
#include <QVector>

/// A body in space: an outline with its front and its back face. Both are planes that may lean: `lean` is by how much
/// the front goes back, and `backLean` by how much the back comes forward, for each metre above the outline's lowest
/// point. In metres; front and back as BuildingElement::depth.
struct BuildingSolid {
    QPainterPath outline;
    double front = 0;
    double back = 0;
    double lean = 0;
    double backLean = 0;
};

/// One part of the building as it is drawn. Lengths in metres; x to the right, y up, the ground at 0.
struct BuildingElement {
    QString id;
    QString name;           ///< in the language that the building was read for
    QString group;          ///< id of its group
    QString startMaterial;  ///< id in the system library that a fresh project gives it; empty for scenery
    QPainterPath outline;
    double depth = 0;    ///< in front of (positive) or behind the facade; decides what hides and shades what
    double tilt = 1;     ///< below 1 the surface lies towards the viewer, and its texture is foreshortened upright
    bool round = false;  ///< shaded as a ball, as foliage is
    bool casts = true;
    bool receives = true;
    QVector<BuildingSolid> solids;  ///< in space; empty: a rule makes them (see BuildingSolids)
    QColor top;                     ///< scenery only: its colours, blended from top to bottom
    QColor bottom;

    /// Scenery has colours of its own and takes no material.
    bool takesMaterial() const { return !startMaterial.isEmpty(); }
};

struct BuildingGroup {
    QString id;
    QString name;
};

/// What is drawn and takes materials. Elements are in the order in which they are painted, from back to front.
class Building {
public:
    QString name;
    QRectF extent;  ///< what the drawing shows when it is fitted into a window
    QVector<BuildingGroup> groups;
    QVector<BuildingElement> elements;
    QJsonObject source;  ///< what it was read from, in all languages; written back unchanged

    /// The element of the id, or null.
    const BuildingElement* find(const QString& id) const;
    /// The front-most element that takes materials at the point, or null.
    const BuildingElement* at(const QPointF& point) const;
};
