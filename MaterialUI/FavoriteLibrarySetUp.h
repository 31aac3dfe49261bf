#pragma once

#include <kiv/AppearanceLibraryManager.h>

/// An empty favourite library, which the manager has from then on.
kiv::CAppearanceLibraryPtr AddFavoriteLibrary(kiv::CAppearanceLibraryManager& manager);

/// Tells the manager where favourite textures lie, replaces its favourite library by an empty one, and clears the
/// folder in which copies of what the cloud has are kept: that is found out anew.
void SetUpFavoriteLibrary(kiv::CAppearanceLibraryManager& manager);
