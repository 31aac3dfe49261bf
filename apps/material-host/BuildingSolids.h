#pragma once

#include "Building.h"

/// The bodies that elements have in space. A project may give them; for the others a rule makes them of the outline and
/// the depth, so that any elevation can be turned:
///
/// - What reaches below the ground runs far back; the ground would be a board otherwise.
/// - What lies towards the viewer (tilt) comes forward by as much as it is foreshortened.
/// - What is round is as thick as half of its smaller side.
/// - What takes a material and is two metres or more both ways is a wall.
/// - Everything else is as thin as a frame or a moulding.
///
/// Outlines end at the building's extent: an elevation's lawn goes on for as far as a window may show it.
namespace BuildingSolids {

/// Empty for what belongs to the horizon and for what lets light through and takes no material, as clouds and glows.
QVector<BuildingSolid> of(const BuildingElement& element, const QRectF& extent);

}  // namespace BuildingSolids
