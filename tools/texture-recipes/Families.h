#pragma once

#include "Parameters.h"

/// Makes the picture of a recipe: `family` names the drawing, `parameters` are its own. Throws RecipeError.
Picture drawFamily(const QString& family, const Parameters& parameters, int size);

// One file each.
Picture drawMasonry(const Parameters& parameters, int size);    ///< blocks and joints: bricks, tiles, planks, slates
Picture drawSurface(const Parameters& parameters, int size);    ///< one surface without joints
Picture drawStone(const Parameters& parameters, int size);      ///< marble, granite, travertine, sandstone, limestone
Picture drawAggregate(const Parameters& parameters, int size);  ///< pieces in a binder: gravel, terrazzo, cobbles, soil
Picture drawMetal(const Parameters& parameters, int size);      ///< brushed, rusted, patinated, spangled
Picture drawSheet(const Parameters& parameters,
                  int size);  ///< regular relief: checker plate, holes, corrugation, pantiles
Picture drawTextile(const Parameters& parameters, int size);    ///< weave, loops, pile
Picture drawWallpaper(const Parameters& parameters, int size);  ///< printed and embossed papers
Picture drawLeather(const Parameters& parameters, int size);
Picture drawStrokes(const Parameters& parameters, int size);  ///< blades, straw, chips, fibres laid over one another
Picture drawGlass(const Parameters& parameters, int size);    ///< frosted, wired, rippled
Picture drawMeasure(const Parameters& parameters, int size);  ///< grids to measure by
