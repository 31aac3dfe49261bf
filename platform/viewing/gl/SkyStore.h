#pragma once

#include "../EnvironmentLighting.h"
#include "ReadAhead.h"

#include <kiv/Sky.h>
#include <kiv/Vector.h>

#include <QDateTime>

#include <array>
#include <map>
#include <string>

namespace kiv {

class CRenderDevice;

/// A sky on the graphics card: the pictures as they are shown, and what lights the scene.
struct CSkyTextures {
    unsigned shown = 0;     ///< cube map, the pictures' own values; 0 while there is no sky
    unsigned lighting = 0;  ///< cube map, linear light, rougher from level to level
    int levels = 0;
    std::array<CVec3<float>, 9> irradiance;
    std::string reason;  ///< why there is nothing else here; empty for a good sky
};

/// The skies of all viewers: one copy for the same six files and their modification times, read and filtered by a
/// thread of its own.
class CSkyStore {
public:
    explicit CSkyStore(CRenderDevice& device);
    ~CSkyStore();

    /// Takes over what was made since the last frame.
    void BeginFrame();
    /// Null while the faces are being read, and when they cannot be used, of which the sky is told.
    const CSkyTextures* Of(CSkybox& sky);
    /// A texture of two channels: CBrdfTable. Binds it to the active unit when it makes it.
    unsigned GetBrdfTable();
    /// The next frame has all skies that were asked for.
    void WaitForPending() { m_readAhead.Wait(); }
    /// Lets go of everything; what is still shown is read again.
    void Release();

private:
    using Times = std::array<QDateTime, 6>;

    struct Sky {
        CSkyTextures textures;
        Times modified;
        bool isRead = false;
        bool isPending = false;
    };

    struct Made {
        CSkybox::Faces files;
        Times modified;
        CCubeFaces faces;
        CEnvironmentLighting lighting;
        std::string reason;
    };

    static Made make(const CSkybox::Faces& files, const Times& modified, int maxSide);
    void makeLater(const CSkybox::Faces& files, const Times& modified);
    void upload(const Made& made);
    void free(CSkyTextures& textures);

    CRenderDevice& m_device;
    std::map<CSkybox::Faces, Sky> m_skies;
    unsigned m_brdfTable = 0;
    CReadAhead<Made> m_readAhead;
};

}  // namespace kiv
