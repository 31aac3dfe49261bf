#pragma once

#include "BuildingMesh.h"

#include <kiv/PrimitiveRenderable.h>
#include <kiv/StateSet.h>

/// Thin unlit rods along the edges of a selected body, so that its material stays as it is.
namespace SelectionFrame {

/// `thickness` in metres. Null without edges.
kiv::CPrimitiveRenderablePtr make(const std::vector<BuildingMesh::Edge>& edges, double thickness);
GRefPtr<kiv::CStateSet> stateSet();

}  // namespace SelectionFrame
