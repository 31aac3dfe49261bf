#pragma once

#include <QString>

/// One texture, as a recipe file describes it:
///   {"family": "masonry", "size": [0.9, 0.9], "normals": 1.0, "parameters": {...}}
/// "size" is what one repeat covers in metres; "normals" the strength of the normal map, absent for none.
struct RecipeResult {
    QString problem;  ///< empty when the pictures were written
};

/// Makes <folder>/<name>.png from the recipe file, and <name>_normal.png where it has one and `withNormals` asks for
/// it. `pixels` is the side of the picture. Reentrant; any thread.
RecipeResult makeTexture(const QString& recipeFile, const QString& folder, int pixels, bool withNormals = true);
