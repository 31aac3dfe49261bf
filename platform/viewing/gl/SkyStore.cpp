#include "SkyStore.h"

#include "../BrdfTable.h"
#include "../EnvironmentLighting.h"
#include "RenderDevice.h"

#include <kiv/TextureManager.h>

namespace kiv {

namespace {

// Formats that Qt's headers name for newer profiles only.
constexpr GLint Rgba16F = 0x881A;
constexpr GLint Rg16F = 0x822F;
constexpr GLenum Rg = 0x8227;
constexpr GLenum HalfFloat = 0x140B;
constexpr GLenum SeamlessCubes = 0x884F;

QImage pictureOf(const std::wstring& file)
{
    QImage picture;
    CTextureManager::TextureHelper(file, [&](int width, int height, const unsigned char* rgba) {
        picture = QImage(rgba, width, height, width * 4, QImage::Format_RGBA8888).copy();
    });
    return picture;
}

unsigned newCube(QOpenGLExtraFunctions& gl, int levels)
{
    unsigned name = 0;
    gl.glGenTextures(1, &name);
    gl.glActiveTexture(GL_TEXTURE0);
    gl.glBindTexture(GL_TEXTURE_CUBE_MAP, name);
    gl.glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MIN_FILTER, levels > 1 ? GL_LINEAR_MIPMAP_LINEAR : GL_LINEAR);
    gl.glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    gl.glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MAX_LEVEL, levels - 1);
    for (const GLenum side : {GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T, GL_TEXTURE_WRAP_R})
        gl.glTexParameteri(GL_TEXTURE_CUBE_MAP, side, GL_CLAMP_TO_EDGE);
    return name;
}

unsigned shownCube(QOpenGLExtraFunctions& gl, const CCubeFaces& faces)
{
    const unsigned name = newCube(gl, 1);
    for (unsigned i = 0; i < 6; ++i) {
        const QImage& face = faces[i];
        gl.glTexImage2D(GL_TEXTURE_CUBE_MAP_POSITIVE_X + i, 0, GL_RGBA8, face.width(), face.height(), 0, GL_RGBA,
                        GL_UNSIGNED_BYTE, face.constBits());
    }
    return name;
}

unsigned lightingCube(QOpenGLExtraFunctions& gl, const CEnvironmentLighting& lighting)
{
    const unsigned name = newCube(gl, int(lighting.levels.size()));
    for (std::size_t level = 0; level < lighting.levels.size(); ++level) {
        const int size = std::max(1, lighting.size >> level);
        const std::size_t stride = std::size_t(size) * std::size_t(size) * 4;
        for (unsigned i = 0; i < 6; ++i)
            gl.glTexImage2D(GL_TEXTURE_CUBE_MAP_POSITIVE_X + i, GLint(level), Rgba16F, size, size, 0, GL_RGBA,
                            HalfFloat, lighting.levels[level].data() + stride * i);
    }
    return name;
}

}  // namespace

CSkyStore::~CSkyStore()
{
    Release();
    m_device.GetFunctions().glDeleteTextures(1, &m_brdfTable);
}

void CSkyStore::Release()
{
    QOpenGLExtraFunctions& gl = m_device.GetFunctions();
    for (const auto& entry : m_skies) {
        const unsigned names[] = {entry.second.shown, entry.second.lighting};
        gl.glDeleteTextures(2, names);
    }
    m_skies.clear();
}

CSkyTextures CSkyStore::make(const CSkybox::Faces& files)
{
    CSkyTextures sky;
    std::array<QImage, 6> pictures;
    for (std::size_t i = 0; i < 6; ++i) {
        pictures[i] = pictureOf(files[i]);
        if (pictures[i].isNull())
            sky.reason = "the face \"" + QString::fromStdWString(files[i]).toStdString() + "\" cannot be read";
    }
    CCubeFaces faces;
    QString reason;
    if (!sky.reason.empty() || !CubeFacesOfSky(pictures, faces, reason)) {
        sky.reason += reason.toStdString();
        return sky;
    }
    QOpenGLExtraFunctions& gl = m_device.GetFunctions();
    gl.glEnable(SeamlessCubes);
    const CEnvironmentLighting lighting = CachedLighting(faces);
    sky.shown = shownCube(gl, faces);
    sky.lighting = lightingCube(gl, lighting);
    sky.levels = int(lighting.levels.size());
    sky.irradiance = lighting.irradiance;
    return sky;
}

const CSkyTextures* CSkyStore::Of(CSkybox& sky)
{
    auto known = m_skies.find(sky.GetFaces());
    if (known == m_skies.end())
        known = m_skies.emplace(sky.GetFaces(), make(sky.GetFaces())).first;
    sky.SetReason(known->second.reason);
    return known->second.reason.empty() ? &known->second : nullptr;
}

unsigned CSkyStore::GetBrdfTable()
{
    if (m_brdfTable != 0)
        return m_brdfTable;
    QOpenGLExtraFunctions& gl = m_device.GetFunctions();
    gl.glGenTextures(1, &m_brdfTable);
    gl.glActiveTexture(GL_TEXTURE0);
    gl.glBindTexture(GL_TEXTURE_2D, m_brdfTable);
    gl.glTexImage2D(GL_TEXTURE_2D, 0, Rg16F, CBrdfTable::Size, CBrdfTable::Size, 0, Rg, GL_FLOAT,
                    BrdfTable().texels.data());
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    return m_brdfTable;
}

}  // namespace kiv
