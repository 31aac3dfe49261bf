#pragma once

#include "MeshStore.h"
#include "ProgramStore.h"
#include "SkyStore.h"
#include "TextureStore.h"

#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>

#include <functional>
#include <map>
#include <memory>
#include <string>

namespace kiv {

/// The OpenGL context in which all viewers of the process draw, and what lies in it. Lives as long as a viewer does, so
/// that a second viewer finds textures and programs ready. A context that is lost (a driver's reset, a session that
/// went to another screen) is replaced by a new one, and what lay in it is made again. User-interface thread.
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
        void Show() { m_device.m_context->swapBuffers(m_surface); }

    private:
        CRenderDevice& m_device;
        QOpenGLContext* m_before;
        QSurface* m_surfaceBefore;
        QSurface* m_surface;
        bool m_current = false;
    };

    /// Whether this machine can draw at all. It may be unable to for a while all the same: see CCurrent.
    bool IsCapable() const { return m_refusal.empty(); }
    /// Why nothing can be drawn, for good or at this time; empty while nothing is wrong.
    const std::string& GetReason() const { return m_refusal.empty() ? m_trouble : m_refusal; }
    /// Whether calls of OpenGL reach the context. Without it nothing may be deleted: names mean other things elsewhere.
    bool IsCurrent() const { return QOpenGLContext::currentContext() == m_context.get(); }
    QOpenGLExtraFunctions& GetFunctions() { return *m_context->extraFunctions(); }
    int GetMaxTextureSize() const { return m_maxTextureSize; }
    int GetMaxCubeSide() const { return m_maxCubeSide; }

    /// Called when there is something new to draw. The key is given back to RemoveListener.
    int AddListener(std::function<void()> listener);
    void RemoveListener(int key);
    /// Any thread; the listeners are called from the event loop.
    void TellListeners();

    CTextureStore& GetTextures() { return *m_textures; }
    CMeshStore& GetMeshes() { return *m_meshes; }
    CProgramStore& GetPrograms() { return *m_programs; }
    CSkyStore& GetSkies() { return *m_skies; }

private:
    CRenderDevice();
    void create();
    bool createContext();
    bool isCapable();
    bool makeCurrent(QSurface* surface);
    bool renew();

    QOffscreenSurface m_surface;
    std::unique_ptr<QOpenGLContext> m_context;
    std::string m_refusal;  // of the first context
    std::string m_trouble;  // until the context can be used again
    int m_maxTextureSize = 0;
    int m_maxCubeSide = 0;
    std::map<int, std::function<void()>> m_listeners;
    int m_nextListener = 0;
    QObject m_receiver;
    std::unique_ptr<CTextureStore> m_textures;
    std::unique_ptr<CMeshStore> m_meshes;
    std::unique_ptr<CProgramStore> m_programs;
    std::unique_ptr<CSkyStore> m_skies;
};

}  // namespace kiv
