#pragma once

#include <QByteArray>
#include <QOpenGLContext>
#include <QOpenGLFunctions>

namespace kiv {

/// Whether the processor draws: what is free on a graphics card is then to be weighed. Needs a current context.
inline bool IsSoftwareRenderer()
{
    QOpenGLFunctions& gl = *QOpenGLContext::currentContext()->functions();
    const QByteArray renderer(reinterpret_cast<const char*>(gl.glGetString(GL_RENDERER)));
    return renderer.contains("llvmpipe") || renderer.contains("softpipe");
}

}  // namespace kiv
