#pragma once

#include <kiv/Camera.h>
#include <kiv/Color.h>
#include <kiv/EventArgs.h>
#include <kiv/Image.h>
#include <kiv/RenderPass.h>
#include <kiv/Scene.h>
#include <kiv/Viewport.h>

#include <cstdint>
#include <memory>
#include <string>

namespace kiv {

class CViewerOptions {
public:
    void SetViewAxesEnabled(bool enabled) { m_viewAxes = enabled; }
    bool IsViewAxesEnabled() const { return m_viewAxes; }
    /// Whether the rotation centre follows what lies under the mouse.
    void SetAutoAdjustRotationCenter(bool enabled) { m_adjustsCentre = enabled; }
    bool IsAutoAdjustRotationCenter() const { return m_adjustsCentre; }

private:
    bool m_viewAxes = true;
    bool m_adjustsCentre = true;
};

/// Shows a scene in a window that belongs to somebody else. Repaints after SetDirty, at most once an event-loop pass,
/// and when the window shows itself or changes its size; never on its own. The mouse orbits (left), pans (middle, or
/// left with Shift), zooms (wheel) and, by double click, goes back to the first view, as far as the owner passes the
/// events on.
///
/// Without OpenGL (a refused context, a driver without GLSL 1.20 and cube maps) nothing is drawn but the background,
/// and GetReason tells why. A context that is lost later is made anew at the next drawing. User-interface thread.
class CViewer {
public:
    /// `window` is the WId of a widget of this process and must outlive the viewer, or 0 to draw into pictures only.
    /// `automaticFramebuffer` 0 draws into a frame buffer of the viewer's own, whose picture the window shows; there is
    /// no other way yet.
    explicit CViewer(std::uintptr_t window, int automaticFramebuffer = 0);
    ~CViewer();
    CViewer(const CViewer&) = delete;
    CViewer& operator=(const CViewer&) = delete;

    /// Back to the state of a new viewer: options, camera, background; the scene stays.
    void SetDefault();

    CViewerOptions& GetOptions();
    CCamera& GetCamera();
    CScene& GetScene();
    CViewport& GetViewport();
    CRenderPassChain& GetRenderPassChain();

    /// The colour behind the scene where no sky is shown. `gradient` is kept for other viewers: 0 is a plain
    /// background.
    void SetBackgroundColor(const CColor& color, int gradient = 0);
    CColor GetBackgroundColor() const;

    /// One of CCamera::EnViewPoint; the scene is not fitted anew. A double click goes back to this view.
    void SetViewPoint(int viewPoint);
    /// Shows all of the scene from where it is seen now. A double click then shows all of it, too, from the view point
    /// that was set last.
    void ZoomAll();
    void SetDirty();

    /// Whether the event was used.
    bool ProcessEvent(const CEventArgs& event);

    /// The node whose surface is seen at the pixel (logical, from the top left), or null.
    CVisualNodePtr PickNode(int x, int y);

    /// Draws a frame into a picture of the size (device pixels, at most 8192 a side), with all textures and the sky,
    /// which it waits for. Null when nothing can be drawn.
    CImagePtr Snapshot(int width, int height);

    /// Why nothing is drawn, or why a surface is drawn with the fallback material; empty while nothing is wrong.
    std::string GetReason() const;
    /// The frames drawn so far.
    unsigned GetFrameCount() const;

private:
    struct Private;
    std::unique_ptr<Private> m;
};

}  // namespace kiv
