#pragma once

#include <kiv/PrimitiveRenderable.h>

#include <QString>

/// The body on which an appearance is shown: "Cylinder", "Sphere", "Box" or "Surface" (exactly), with normals, texture
/// coordinates in both channels and tangents. Null for another name.
kiv::CPrimitiveRenderablePtr MakePreviewBody(const QString& shape);
