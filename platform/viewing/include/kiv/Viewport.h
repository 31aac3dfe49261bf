#pragma once

#include <kiv/Sky.h>

namespace kiv {

/// The part of the window in which the scene is shown: all of it.
class CViewport {
public:
    /// Shows a sky box, or (false) the background colour again.
    void SetSkyBox(bool show, const CSkybox::Faces& faces, const CShaderProgramPtr& program);
    const CSkyPtr& GetSky() const { return m_sky; }

private:
    CSkyPtr m_sky;
};

}  // namespace kiv
