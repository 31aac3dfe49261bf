#pragma once

#include <kiv/Sky.h>
#include <kiv/Vector.h>

#include <array>
#include <map>
#include <string>

namespace kiv {

class CRenderDevice;

/// A sky on the graphics card: the pictures as they are shown, and what lights the scene.
struct CSkyTextures {
    unsigned shown = 0;     ///< cube map, the pictures' own values
    unsigned lighting = 0;  ///< cube map, linear light, rougher from level to level
    int levels = 0;
    std::array<CVec3<float>, 9> irradiance;
    std::string reason;  ///< why there is nothing else here; empty for a good sky
};

/// The skies of all viewers, one copy for the same six files.
class CSkyStore {
public:
    explicit CSkyStore(CRenderDevice& device) : m_device(device) {}
    ~CSkyStore();

    /// Reads and filters the faces when they are first asked for. Null when they cannot be used; the sky is told why.
    const CSkyTextures* Of(CSkybox& sky);
    /// A texture of two channels: CBrdfTable.
    unsigned GetBrdfTable();
    /// Lets go of all skies; what is still shown is read again.
    void Release();

private:
    CSkyTextures make(const CSkybox::Faces& files);

    CRenderDevice& m_device;
    std::map<CSkybox::Faces, CSkyTextures> m_skies;
    unsigned m_brdfTable = 0;
};

}  // namespace kiv
