#pragma once

#include "../TextureMips.h"
#include "ReadAhead.h"

#include <kiv/StateSet.h>

#include <QDateTime>

#include <map>
#include <string>
#include <vector>

namespace kiv {

class CRenderDevice;

/// The pictures on the graphics card: one copy for each file and modification time, decoded by threads of its own.
/// Keeps the ones used last, up to a limit.
class CTextureStore {
public:
    explicit CTextureStore(CRenderDevice& device);
    ~CTextureStore();

    /// Takes over what was decoded since the last frame, and forgets the reason. A fine frame is filtered along the
    /// direction of view as far as the driver can, others as cheaply as it can.
    void BeginFrame(bool isFine);
    /// Binds the picture to a unit with the binding's wrapping. False while it is being read, and for a file that
    /// cannot be read (see GetReason).
    bool Bind(unsigned unit, const CTextureBinding& binding);
    /// The next frame has all pictures that were asked for.
    void WaitForPending() { m_readAhead.Wait(); }
    /// Lets go of everything; what is still drawn is read again.
    void Release();

    /// What is wrong with a picture that this frame asked for; empty while nothing is.
    const std::string& GetReason() const { return m_reason; }
    std::size_t GetBytes() const { return m_bytes; }

private:
    using Key = std::pair<std::wstring, bool>;

    struct Texture {
        unsigned name = 0;
        QDateTime modified;
        std::size_t bytes = 0;
        unsigned lastFrame = 0;
        bool isPending = false;
    };

    struct Decoded {
        Key key;
        QDateTime modified;
        std::vector<CMipLevel> levels;
    };

    void decodeLater(const Key& key, const QDateTime& modified);
    void upload(const Decoded& decoded);
    void free(Texture& texture);
    void evict();

    CRenderDevice& m_device;
    std::map<Key, Texture> m_textures;
    std::size_t m_bytes = 0;
    unsigned m_frame = 0;
    float m_anisotropy = 1;
    bool m_isFine = true;
    std::string m_reason;
    CReadAhead<Decoded> m_readAhead;
};

}  // namespace kiv
