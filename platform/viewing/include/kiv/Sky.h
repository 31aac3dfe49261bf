#pragma once

#include <kiv/ShaderProgramManager.h>

#include <array>
#include <memory>
#include <string>

namespace kiv {

/// What is seen behind the scene.
class CSky {
public:
    virtual ~CSky() = default;
};

/// Six square pictures around the scene, in the order back, front, left, right, top, bottom. World: x right, y away
/// from the viewer who looks from the front, z up. "back" is what that viewer sees behind the scene (at +y), "front"
/// what is behind him (-y), "left" is at -x, "right" at +x; each with z up. "top" joins the upper edge of "back" with
/// its lower edge, "bottom" the lower edge of "back" with its upper edge. The program looks a direction (x, y, z) up at
/// (x, -z, y), so OpenGL gets the pictures upside down as: +z back, -z front, -x left, +x right, -y top, +y bottom. The
/// faces are read by a thread when the sky is first drawn, and again when one of them changes; until they are there the
/// background is shown and nothing lights. See GetReason for what was wrong with them.
class CSkybox : public CSky {
public:
    using Faces = std::array<std::wstring, 6>;

    CSkybox(Faces faces, CShaderProgramPtr program) : m_faces(std::move(faces)), m_program(std::move(program)) {}

    const Faces& GetFaces() const { return m_faces; }
    const CShaderProgramPtr& GetProgram() const { return m_program; }

    /// Lets the sky light the scene. Off at first.
    void SetImageBasedLightingEnabled(bool enabled) { m_lights = enabled; }
    bool IsImageBasedLightingEnabled() const { return m_lights; }

    /// Why the faces could not be used; empty while nothing is wrong.
    const std::string& GetReason() const { return m_reason; }
    void SetReason(const std::string& reason) { m_reason = reason; }

private:
    Faces m_faces;
    CShaderProgramPtr m_program;
    std::string m_reason;
    bool m_lights = false;
};

using CSkyPtr = std::shared_ptr<CSky>;

}  // namespace kiv
