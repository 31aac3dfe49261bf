#include "AppearanceTextures.h"

std::vector<kiv::CAppearanceInstancePtr> kiv::FindTextures(const CAppearanceInstance& appearance)
{
    std::vector<CAppearanceInstancePtr> textures;
    for (const auto& property : appearance) {
        const auto* texture = property.second->TryGet<CAppearanceInstancePtr>();
        if (texture && *texture && IsTexture(**texture) && !(*texture)->GetTextureFile().empty())
            textures.push_back(*texture);
    }
    return textures;
}
