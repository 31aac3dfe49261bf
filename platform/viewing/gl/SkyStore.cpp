#include "SkyStore.h"

#include "../BrdfTable.h"
#include "RenderDevice.h"

#include <kiv/TextureManager.h>

#include <QFileInfo>

namespace kiv {

namespace {

// Formats that Qt's headers name for newer profiles only.
constexpr GLint Rgba16F = 0x881A;
constexpr GLint Rg16F = 0x822F;
constexpr GLenum Rg = 0x8227;
constexpr GLenum HalfFloat = 0x140B;
constexpr GLenum SeamlessCubes = 0x884F;

const char* const NoMemory = "there is no memory for the sky box";

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

CSkyStore::CSkyStore(CRenderDevice& device) : m_device(device), m_readAhead(1, [&device] { device.TellListeners(); })
{
}

CSkyStore::~CSkyStore()
{
    Release();
}

void CSkyStore::Release()
{
    m_readAhead.Cancel();
    for (auto& entry : m_skies)
        free(entry.second.textures);
    m_skies.clear();
    if (m_device.IsCurrent())
        m_device.GetFunctions().glDeleteTextures(1, &m_brdfTable);
    m_brdfTable = 0;
}

void CSkyStore::free(CSkyTextures& textures)
{
    const unsigned names[] = {textures.shown, textures.lighting};
    if (m_device.IsCurrent())
        m_device.GetFunctions().glDeleteTextures(2, names);
    textures = {};
}

void CSkyStore::BeginFrame()
{
    for (const Made& made : m_readAhead.Take())
        upload(made);
}

const CSkyTextures* CSkyStore::Of(CSkybox& sky)
{
    Times modified;
    for (std::size_t i = 0; i < modified.size(); ++i)
        modified[i] = QFileInfo(QString::fromStdWString(sky.GetFaces()[i])).lastModified();
    Sky& known = m_skies[sky.GetFaces()];
    if (!known.isPending && (!known.isRead || known.modified != modified)) {
        known.isPending = true;
        makeLater(sky.GetFaces(), modified);
    }
    sky.SetReason(known.textures.reason);
    return known.textures.shown == 0 ? nullptr : &known.textures;
}

void CSkyStore::makeLater(const CSkybox::Faces& files, const Times& modified)
{
    const int maxSide = m_device.GetMaxCubeSide();
    m_readAhead.Start([files, modified, maxSide] {
        try {
            return make(files, modified, maxSide);
        } catch (const std::bad_alloc&) {
            return Made{files, modified, {}, {}, NoMemory};
        }
    });
}

CSkyStore::Made CSkyStore::make(const CSkybox::Faces& files, const Times& modified, int maxSide)
{
    Made made{files, modified, {}, {}, {}};
    std::array<QImage, 6> pictures;
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        pictures[i] = pictureOf(files[i]);
        if (pictures[i].isNull())
            made.reason = "the face \"" + QString::fromStdWString(files[i]).toStdString() + "\" cannot be read";
    }
    QString reason;
    if (made.reason.empty() && !CubeFacesOfSky(pictures, maxSide, made.faces, reason))
        made.reason = reason.toStdString();
    if (made.reason.empty())
        made.lighting = CachedLighting(made.faces);
    if (made.reason.empty() && made.lighting.IsEmpty())
        made.reason = NoMemory;
    return made;
}

void CSkyStore::upload(const Made& made)
{
    Sky& sky = m_skies[made.files];
    free(sky.textures);
    sky.modified = made.modified;
    sky.isRead = true;
    sky.isPending = false;
    sky.textures.reason = made.reason;
    if (!made.reason.empty())
        return;
    QOpenGLExtraFunctions& gl = m_device.GetFunctions();
    gl.glEnable(SeamlessCubes);
    sky.textures.shown = shownCube(gl, made.faces);
    sky.textures.lighting = lightingCube(gl, made.lighting);
    sky.textures.levels = int(made.lighting.levels.size());
    sky.textures.irradiance = made.lighting.irradiance;
}

unsigned CSkyStore::GetBrdfTable()
{
    if (m_brdfTable != 0)
        return m_brdfTable;
    QOpenGLExtraFunctions& gl = m_device.GetFunctions();
    gl.glGenTextures(1, &m_brdfTable);
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
