#pragma once

#include <glenox/RefPtr.h>
#include <kiv/Matrix3.h>
#include <kiv/Vector.h>

#include <map>
#include <string>
#include <variant>
#include <vector>

namespace kiv {

/// How a texture coordinate outside 0..1 is read.
enum class EnTextureWrap { Repeat = 0, MirroredRepeat = 1, Clamp = 2 };

/// A picture file bound to a sampler of the shader.
struct CTextureBinding {
    std::wstring file;  ///< an absolute path of this machine
    EnTextureWrap wrapU = EnTextureWrap::Repeat;
    EnTextureWrap wrapV = EnTextureWrap::Repeat;
    bool isColor = true;  ///< sRGB colours; false for directions and other numbers

    friend bool operator==(const CTextureBinding& a, const CTextureBinding& b)
    {
        return a.file == b.file && a.wrapU == b.wrapU && a.wrapV == b.wrapV && a.isColor == b.isColor;
    }
};

/// How much of the shading is done.
enum class EnShading { Unshaded = 0, Default = 1, Fast = 2 };

/// What a surface is drawn with: the shader parts, their uniforms and their textures. Knows nothing of OpenGL, so it
/// can be made anywhere. A name that the shader does not know is ignored; one that is not set keeps the shader's
/// default.
class CStateSet : public GReferenced {
public:
    using Uniform = std::variant<bool, int, float, CVec2<float>, CVec3<float>, CVec4<float>, CMatrix3<float>>;

    /// Back to a new state set.
    void Clear() { *this = CStateSet(); }

    /// The parts that the fragment shader is put together from, in order.
    void SetShaderParts(std::vector<std::string> parts) { m_parts = std::move(parts); }
    const std::vector<std::string>& GetShaderParts() const { return m_parts; }
    void SetShading(EnShading shading) { m_shading = shading; }
    EnShading GetShading() const { return m_shading; }

    /// A number that is not finite is refused (false), and the uniform keeps what it had.
    bool SetUniform(const std::string& name, const Uniform& value);
    const std::map<std::string, Uniform>& GetUniforms() const { return m_uniforms; }
    /// The uniform's value as T, or `otherwise` when it is not set or of another type.
    template <typename T>
    T Get(const std::string& name, const T& otherwise) const
    {
        const auto found = m_uniforms.find(name);
        const T* value = found == m_uniforms.end() ? nullptr : std::get_if<T>(&found->second);
        return value ? *value : otherwise;
    }

    void SetTexture(const std::string& sampler, const CTextureBinding& texture) { m_textures[sampler] = texture; }
    const std::map<std::string, CTextureBinding>& GetTextures() const { return m_textures; }

    /// Drawn behind everything opaque, the farthest first, and mixed with what is there.
    void SetTransparent(bool transparent) { m_transparent = transparent; }
    bool IsTransparent() const { return m_transparent; }

    /// Mirrors the surroundings sharply: see docs/shading.md.
    void SetUsePreEnvironmentMap(bool use) { m_usePreEnvironmentMap = use; }
    bool IsUsingPreEnvironmentMap() const { return m_usePreEnvironmentMap; }

    CStateSet() = default;
    ~CStateSet() override = default;

private:
    CStateSet& operator=(CStateSet&& other) noexcept
    {
        m_parts = std::move(other.m_parts);
        m_uniforms = std::move(other.m_uniforms);
        m_textures = std::move(other.m_textures);
        m_shading = other.m_shading;
        m_transparent = other.m_transparent;
        m_usePreEnvironmentMap = other.m_usePreEnvironmentMap;
        return *this;
    }

    std::vector<std::string> m_parts;
    std::map<std::string, Uniform> m_uniforms;
    std::map<std::string, CTextureBinding> m_textures;
    EnShading m_shading = EnShading::Default;
    bool m_transparent = false;
    bool m_usePreEnvironmentMap = false;
};

}  // namespace kiv
