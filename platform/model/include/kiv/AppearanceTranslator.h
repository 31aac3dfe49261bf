#pragma once

#include <kiv/AppearanceInstance.h>
#include <kiv/StateSet.h>

namespace kiv {

class CAppearanceLibraryManager;

/// Turns appearances into a render state, as the bindings of their templates say: parameter values become uniforms,
/// textures become samplers ("textureUnit0" is "baseTexture", "textureUnit1" is "bumpTexture"), the shader parts follow
/// the manager's level of detail. Made by CAppearanceLibraryManager::CreateTranslator.
class CAppearanceTranslator {
public:
    /// The manager is borrowed; the state set is held.
    CAppearanceTranslator(const CAppearanceLibraryManager& manager, CStateSet* stateSet);

    /// Fills the state set anew. A value that is not finite keeps the shader's default; a texture whose path names
    /// nothing is left out. An appearance of an unknown type is drawn as a "Generic" one. False, changing nothing, for
    /// null.
    bool Translate(const CAppearanceInstancePtr& appearance);

private:
    void bindUniforms(const CAppearanceInstance& appearance, const std::map<String, String>& bindings);
    void bindTextures(const CAppearanceInstance& appearance, const CAppearanceTemplate& appearanceTemplate);

    const CAppearanceLibraryManager& m_manager;
    GRefPtr<CStateSet> m_stateSet;
};

}  // namespace kiv
