#pragma once

#include "PreviewScene.h"

#include <memory>

/// The scene drawn by VTK, off screen, with its physically based interpolation, lit by the sky.
class VtkPreview {
public:
    VtkPreview(const PreviewScene& scene, int width, int height);
    ~VtkPreview();

    /// Draws a frame and reads it back. False when nothing was drawn.
    bool Draw();
    /// Writes what Draw read, to be looked at.
    bool Save(const QString& path) const;

private:
    struct Private;
    std::unique_ptr<Private> m;
};
