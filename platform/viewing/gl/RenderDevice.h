#pragma once

#include "MeshStore.h"
#include "ProgramStore.h"
#include "SkyStore.h"
#include "TextureStore.h"

#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>

#include <memory>

namespace kiv {

/// The OpenGL context in which all viewers of the process draw, and what lies in it. Lives as long as a viewer does, so
/// that a second viewer finds textures and programs ready. User-interface thread.
class CRenderDevice {
public:
    /// Never null; see GetReason for one that cannot draw.
    static std::shared_ptr<CRenderDevice> Shared();
    /// The device while there is one, otherwise null.
    static std::shared_ptr<CRenderDevice> Existing();
    ~CRenderDevice();

    /// Asked of contexts and windows, never made the default, which is the host's.
    static QSurfaceFormat WantedFormat();

    /// Makes the context current for its lifetime and puts back what was current before: it may be the host's.
    class CCurrent {
    public:
        /// On the surface, or on any without one.
        explicit CCurrent(CRenderDevice& device, QSurface* surface = nullptr);
        ~CCurrent();
        CCurrent(const CCurrent&) = delete;
        CCurrent& operator=(const CCurrent&) = delete;
        explicit operator bool() const { return m_current; }

        /// Shows what was drawn into the surface.
        void Show() { m_context.swapBuffers(m_surface); }

    private:
        QOpenGLContext& m_context;
        QOpenGLContext* m_before;
        QSurface* m_surfaceBefore;
        QSurface* m_surface;
        bool m_current = false;
    };

    const std::string& GetReason() const { return m_reason; }
    QOpenGLExtraFunctions& GetFunctions() { return *m_context->extraFunctions(); }
    int GetMaxTextureSize() const { return m_maxTextureSize; }

    CTextureStore& GetTextures() { return *m_textures; }
    CMeshStore& GetMeshes() { return *m_meshes; }
    CProgramStore& GetPrograms() { return *m_programs; }
    CSkyStore& GetSkies() { return *m_skies; }

private:
    CRenderDevice();
    void create();
    bool isCapable();

    QOffscreenSurface m_surface;
    std::unique_ptr<QOpenGLContext> m_context;
    std::string m_reason;
    int m_maxTextureSize = 0;
    std::unique_ptr<CTextureStore> m_textures;
    std::unique_ptr<CMeshStore> m_meshes;
    std::unique_ptr<CProgramStore> m_programs;
    std::unique_ptr<CSkyStore> m_skies;
};

}  // namespace kiv
