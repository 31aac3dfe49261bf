#pragma once

#include "Building.h"

#include <kiv/AppearanceInstance.h>

#include <QMap>

#include <vector>

/// What a project file holds: a building, the project's own materials, and which element has which material.
struct ProjectContent {
    Building building;
    /// The appearances of the project library.
    std::vector<kiv::CAppearanceInstancePtr> projectMaterials;
    /// Element id to material: one of the project's, or one of another library whose document the project carries, so
    /// that it looks the same on a machine that lacks it.
    QMap<QString, kiv::CAppearanceInstancePtr> assignments;
};
