#include "TextureStore.h"

#include "RenderDevice.h"
#include "SoftwareRenderer.h"

#include <kiv/TextureManager.h>

#include <QFileInfo>

namespace kiv {

namespace {

constexpr std::size_t MaxBytes = std::size_t(256) << 20;
constexpr float WantedAnisotropy = 4;
// Extensions that Qt's headers do not name.
constexpr GLenum MaxAnisotropy = 0x84FF;
constexpr GLenum TextureAnisotropy = 0x84FE;
constexpr GLenum Srgb8Alpha8 = 0x8C43;
constexpr GLenum Wraps[] = {GL_REPEAT, GL_MIRRORED_REPEAT, GL_CLAMP_TO_EDGE};

GLenum wrapOf(EnTextureWrap wrap)
{
    const auto index = unsigned(wrap);
    return index < 3 ? Wraps[index] : GLenum(GL_REPEAT);
}

std::vector<CMipLevel> decode(const std::wstring& file, bool isColor, int maxSide)
{
    std::vector<CMipLevel> levels;
    CTextureManager::TextureHelper(file, [&](int width, int height, const unsigned char* rgba) {
        levels = MakeMips(width, height, rgba, isColor, maxSide);
    });
    return levels;
}

}  // namespace

CTextureStore::CTextureStore(CRenderDevice& device)
    : m_device(device), m_readAhead(2, [&device] { device.TellListeners(); })
{
    // Mesa's software renderer has the filter, but walks an ellipse of texels for each pixel: a building takes seconds.
    if (QOpenGLContext::currentContext()->hasExtension("GL_EXT_texture_filter_anisotropic") && !IsSoftwareRenderer()) {
        device.GetFunctions().glGetFloatv(MaxAnisotropy, &m_anisotropy);
        m_anisotropy = std::min(m_anisotropy, WantedAnisotropy);
    }
}

CTextureStore::~CTextureStore()
{
    Release();
}

void CTextureStore::BeginFrame(bool isFine)
{
    m_isFine = isFine;
    m_reason.clear();
    ++m_frame;
    for (const Decoded& decoded : m_readAhead.Take())
        upload(decoded);
    evict();
}

bool CTextureStore::Bind(unsigned unit, const CTextureBinding& binding)
{
    const Key key(binding.file, binding.isColor);
    const QDateTime modified = QFileInfo(QString::fromStdWString(binding.file)).lastModified();
    Texture& texture = m_textures[key];
    texture.lastFrame = m_frame;
    if (!modified.isValid())
        m_reason = "there is no picture \"" + QString::fromStdWString(binding.file).toStdString() + "\"";
    else if (texture.modified != modified && !texture.isPending)
        decodeLater(key, modified);
    if (texture.name == 0 && !texture.isPending && modified.isValid())
        m_reason = "the picture \"" + QString::fromStdWString(binding.file).toStdString() + "\" cannot be read";
    if (texture.name == 0)
        return false;
    QOpenGLExtraFunctions& gl = m_device.GetFunctions();
    gl.glActiveTexture(GL_TEXTURE0 + unit);
    gl.glBindTexture(GL_TEXTURE_2D, texture.name);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GLint(wrapOf(binding.wrapU)));
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GLint(wrapOf(binding.wrapV)));
    if (m_anisotropy > 1)
        gl.glTexParameterf(GL_TEXTURE_2D, TextureAnisotropy, m_isFine ? m_anisotropy : 1);
    return true;
}

void CTextureStore::decodeLater(const Key& key, const QDateTime& modified)
{
    m_textures[key].isPending = true;
    const int maxSide = m_device.GetMaxTextureSize();
    m_readAhead.Start([key, modified, maxSide] {
        Decoded decoded{key, modified, {}};
        try {
            decoded.levels = decode(key.first, key.second, maxSide);
        } catch (const std::bad_alloc&) {
            decoded.levels.clear();
        }
        return decoded;
    });
}

void CTextureStore::upload(const Decoded& decoded)
{
    Texture& texture = m_textures[decoded.key];
    free(texture);
    texture.isPending = false;
    texture.modified = decoded.modified;
    texture.lastFrame = m_frame;
    if (decoded.levels.empty())
        return;
    QOpenGLExtraFunctions& gl = m_device.GetFunctions();
    gl.glGenTextures(1, &texture.name);
    gl.glActiveTexture(GL_TEXTURE0);
    gl.glBindTexture(GL_TEXTURE_2D, texture.name);
    gl.glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    int index = 0;
    for (const CMipLevel& level : decoded.levels) {
        gl.glTexImage2D(GL_TEXTURE_2D, index++, GLint(decoded.key.second ? Srgb8Alpha8 : GLenum(GL_RGBA8)), level.width,
                        level.height, 0, GL_RGBA, GL_UNSIGNED_BYTE, level.texels.data());
        texture.bytes += level.texels.size();
    }
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, index - 1);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    m_bytes += texture.bytes;
}

void CTextureStore::free(Texture& texture)
{
    if (texture.name != 0 && m_device.IsCurrent())
        m_device.GetFunctions().glDeleteTextures(1, &texture.name);
    m_bytes -= texture.bytes;
    texture.name = 0;
    texture.bytes = 0;
}

void CTextureStore::evict()
{
    while (m_bytes > MaxBytes) {
        auto oldest = m_textures.end();
        for (auto it = m_textures.begin(); it != m_textures.end(); ++it) {
            const bool isFree = it->second.name != 0 && !it->second.isPending && it->second.lastFrame + 1 < m_frame;
            if (isFree && (oldest == m_textures.end() || it->second.lastFrame < oldest->second.lastFrame))
                oldest = it;
        }
        if (oldest == m_textures.end())
            return;
        free(oldest->second);
        m_textures.erase(oldest);
    }
}

void CTextureStore::Release()
{
    m_readAhead.Cancel();
    for (auto& entry : m_textures)
        free(entry.second);
    m_textures.clear();
    m_reason.clear();
}

}  // namespace kiv
