#include "SceneRenderer.h"

#include "../Srgb.h"
#include "RenderDevice.h"

#include <QVector3D>

#include <algorithm>
#include <cmath>

namespace kiv {

namespace {

// How much farther than its middle the corner of the nearest plane is, for pictures up to 4 times as wide as high.
constexpr double LampRadiance = 0.5;  // of a lamp of intensity 1, reflected by a white surface that faces it
constexpr double NearCorner = 2;

enum EnUnit { BaseUnit = 0, BumpUnit = 1, EnvironmentUnit = 2, BrdfUnit = 3 };

QVector3D toQt(const CVec3<double>& v)
{
    return {float(v.x), float(v.y), float(v.z)};
}

QVector4D toQt(const CVec4<float>& v)
{
    return {v.x, v.y, v.z, v.w};
}

float distanceToCentre(const CMeshStore::Facts& mesh, const CVec3<double>& eye)
{
    const QVector3D centre((mesh.low.x + mesh.high.x) / 2, (mesh.low.y + mesh.high.y) / 2,
                           (mesh.low.z + mesh.high.z) / 2);
    return centre.distanceToPoint(toQt(eye));
}

bool isWithin(const CMeshStore::Facts& mesh, const CVec3<double>& eye, double margin)
{
    const auto is = [margin](double place, double low, double high) {
        return place > low - margin && place < high + margin;
    };
    return is(eye.x, double(mesh.low.x), double(mesh.high.x)) && is(eye.y, double(mesh.low.y), double(mesh.high.y)) &&
           is(eye.z, double(mesh.low.z), double(mesh.high.z));
}

// Of a perspective; the other type cuts nothing off.
double nearOf(const CCamera& camera)
{
    return std::max(camera.GetDistance() - 3 * camera.GetFittedRadius(), camera.GetDistance() / 200);
}

/// Hands a value of a state set to the uniform at its place.
struct CUniformWriter {
    QOpenGLShaderProgram& program;
    int location;

    void operator()(bool value) const { program.setUniformValue(location, GLint(value)); }
    void operator()(int value) const { program.setUniformValue(location, GLint(value)); }
    void operator()(float value) const { program.setUniformValue(location, value); }
    void operator()(const CVec2<float>& v) const { program.setUniformValue(location, v.x, v.y); }
    void operator()(const CVec3<float>& v) const { program.setUniformValue(location, v.x, v.y, v.z); }
    void operator()(const CVec4<float>& v) const { program.setUniformValue(location, v.x, v.y, v.z, v.w); }
    void operator()(const CMatrix3<float>& matrix) const
    {
        program.setUniformValue(location, QMatrix3x3(matrix.m.data()));  // row by row, as ours
    }
};

struct CDefault {
    const char* uniform;
    CStateSet::Uniform value;
};

// What a material that does not say otherwise is: grey, matt, opaque.
const std::vector<CDefault>& defaults()
{
    static const std::vector<CDefault> values = {
        {"baseColor", CVec4<float>(0.7F, 0.7F, 0.7F, 1)},
        {"alpha", 1.0F},
        {"roughness", 0.5F},
        {"metallic", 0.0F},
        {"ior", 1.5F},
        {"baseTrf", CMatrix3<float>()},
        {"bumpTrf", CMatrix3<float>()},
        {"bumpStrength", 1.0F},
        {"lightColor", CVec4<float>(1, 1, 1, 1)},
        {"lightPower", 0.0F},
        {"shininess", 0.25F},
        {"specularColor", CVec4<float>(0.2F, 0.2F, 0.2F, 1)},
    };
    return values;
}

CVec4<float> linearLight(const CVec4<float>& color)
{
    const auto decode = [](float value) { return float(DecodeSrgb(std::clamp(double(value), 0.0, 1.0))); };
    return {decode(color.x), decode(color.y), decode(color.z), color.w};
}

void write(CLinkedProgram& program, const std::string& name, const CStateSet::Uniform& value)
{
    const int location = program.LocationOf(name);
    if (location < 0)
        return;
    // The name says that it is a colour of a document; shaders have linear light only.
    const auto* color = std::get_if<CVec4<float>>(&value);
    if (color && QByteArray::fromStdString(name).endsWith("Color"))
        program.Get().setUniformValue(location, toQt(linearLight(*color)));
    else
        std::visit(CUniformWriter{program.Get(), location}, value);
}

CPrimitiveRenderablePtr makeSkyBody()
{
    auto body = std::make_shared<CPrimitiveRenderable>(CPrimitiveRenderable::Triangles, 1);
    std::vector<CVec3<float>> corners;
    corners.reserve(8);
    for (int i = 0; i < 8; ++i)
        corners.emplace_back(i & 1 ? 1.0F : -1.0F, i & 2 ? 1.0F : -1.0F, i & 4 ? 1.0F : -1.0F);
    body->SetVertexArray(corners);
    body->SetNormalArray(corners);
    body->SetTextureArray(0, std::vector<CVec2<float>>(8));
    body->SetIndexArray(
        {0, 1, 3, 0, 3, 2, 4, 6, 7, 4, 7, 5, 0, 4, 5, 0, 5, 1, 2, 3, 7, 2, 7, 6, 0, 2, 6, 0, 6, 4, 1, 5, 7, 1, 7, 3});
    return body;
}

}  // namespace

QMatrix4x4 ViewProjection(const CCamera& camera, double aspect)
{
    const double distance = camera.GetDistance();
    const double radius = camera.GetFittedRadius();
    const double near = nearOf(camera);
    const double far = distance + 20 * radius;
    QMatrix4x4 projection;
    const double half = std::tan(CCamera::FieldOfView / 2);
    if (camera.GetType() == CCamera::Orthographic) {
        const double height = half * distance;
        projection.ortho(float(-height * aspect), float(height * aspect), float(-height), float(height), float(-far),
                         float(far));
    } else {
        projection.frustum(float(-half * near * aspect), float(half * near * aspect), float(-half * near),
                           float(half * near), float(near), float(far));
    }
    QMatrix4x4 view;
    view.lookAt(toQt(camera.GetEye()), toQt(camera.GetCentre()), toQt(camera.GetUp()));
    return projection * view;
}

void CSceneRenderer::findEnvironment(const CFrame& frame)
{
    auto* pass = dynamic_cast<CRenderScenePass*>(frame.passes.Find("kiv_main_pass"));
    const auto environment = pass ? pass->GetPoolRenderer().GetEnvironment() : nullptr;
    const bool lights = environment && environment->IsImageBasedLightingEnabled();
    m_environment = lights ? m_device.GetSkies().Of(*environment) : nullptr;
    if (lights && !m_environment)
        m_reason = environment->GetReason();
}

void CSceneRenderer::beginFrame(const CFrame& frame)
{
    m_reason.clear();
    m_eye = frame.camera.GetEye();
    m_near = frame.camera.GetType() == CCamera::Orthographic ? 0 : nearOf(frame.camera);
    m_viewProjection = ViewProjection(frame.camera, frame.aspect);
    m_device.GetSkies().BeginFrame();
    m_device.GetTextures().BeginFrame(frame.isFine);
    m_device.GetPrograms().BeginFrame();
    findEnvironment(frame);
    m_opaque.clear();
    m_transparent.clear();
    collect(*frame.scene.GetRoot(), nullptr);
}

void CSceneRenderer::Prefetch(const CFrame& frame)
{
    beginFrame(frame);
    if (auto* sky = dynamic_cast<CSkybox*>(frame.viewport.GetSky().get()))
        m_device.GetSkies().Of(*sky);
    for (const auto* items : {&m_opaque, &m_transparent}) {
        for (const Item& item : *items)
            bindTextures(*item.stateSet);
    }
}

void CSceneRenderer::Draw(const CFrame& frame)
{
    QOpenGLExtraFunctions& gl = m_device.GetFunctions();
    beginFrame(frame);
    std::stable_sort(m_transparent.begin(), m_transparent.end(),
                     [](const Item& a, const Item& b) { return a.distance > b.distance; });
    gl.glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    gl.glDepthMask(GL_TRUE);
    gl.glClearColor(float(frame.background.r) / 255, float(frame.background.g) / 255, float(frame.background.b) / 255,
                    1);
    gl.glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    gl.glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_FALSE);  // the frame itself stays opaque
    gl.glEnable(GL_DEPTH_TEST);
    gl.glDepthFunc(GL_LEQUAL);
    gl.glDisable(GL_BLEND);
    drawDepths();
    for (const Item& item : m_opaque) {
        setCulling(item);
        drawItem(item, frame);
    }
    gl.glDisable(GL_CULL_FACE);
    drawSky(frame);
    drawTransparent(frame);
    m_device.GetMeshes().Prune();
    if (m_reason.empty())
        m_reason = m_device.GetPrograms().GetReason();
    if (m_reason.empty())
        m_reason = m_device.GetTextures().GetReason();
}

void CSceneRenderer::collect(const CVisualNode& node, const CStateSet* inherited)
{
    const CStateSet* stateSet = node.GetStateSet() ? node.GetStateSet() : inherited;
    if (node.GetRenderable()) {
        const CStateSet* used = stateSet ? stateSet : m_fallback.get();
        auto& items = used->IsTransparent() ? m_transparent : m_opaque;
        items.push_back(itemOf(node.GetRenderable(), used));
    }
    for (const CVisualNodePtr& child : node.GetChildren())
        collect(*child, stateSet);
}

CSceneRenderer::Item CSceneRenderer::itemOf(const CPrimitiveRenderablePtr& renderable, const CStateSet* stateSet)
{
    const CMeshStore::Facts& mesh = m_device.GetMeshes().FactsOf(renderable);
    // A body that the eye is in, or that is cut open in front of it, shows its inside.
    const bool isClosed = mesh.isClosed && !isWithin(mesh, m_eye, m_near * NearCorner);
    return {renderable, stateSet, distanceToCentre(mesh, m_eye), isClosed};
}

// The far side of a closed body is never seen.
void CSceneRenderer::setCulling(const Item& item)
{
    QOpenGLExtraFunctions& gl = m_device.GetFunctions();
    gl.glCullFace(GL_BACK);
    if (item.isClosed)
        gl.glEnable(GL_CULL_FACE);
    else
        gl.glDisable(GL_CULL_FACE);
}

// Several bodies hide one another, and a pixel's light costs far more than its depth.
void CSceneRenderer::drawDepths()
{
    CLinkedProgram* program = m_opaque.size() > 1 ? m_device.GetPrograms().DepthProgram() : nullptr;
    if (!program || !program->Get().bind())
        return;
    QOpenGLExtraFunctions& gl = m_device.GetFunctions();
    gl.glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    program->Get().setUniformValue(program->LocationOf("mvpMatrix"), m_viewProjection);
    for (const Item& item : m_opaque) {
        setCulling(item);
        m_device.GetMeshes().Draw(item.renderable);
    }
    program->Get().release();
    gl.glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_FALSE);
}

void CSceneRenderer::drawTransparent(const CFrame& frame)
{
    QOpenGLExtraFunctions& gl = m_device.GetFunctions();
    gl.glEnable(GL_BLEND);
    gl.glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    // A body's far side is seen through its near one.
    gl.glEnable(GL_CULL_FACE);
    for (const Item& item : m_transparent) {
        gl.glCullFace(GL_FRONT);
        drawItem(item, frame);
        gl.glCullFace(GL_BACK);
        drawItem(item, frame);
    }
    gl.glDisable(GL_CULL_FACE);
    gl.glDisable(GL_BLEND);
}

void CSceneRenderer::drawItem(const Item& item, const CFrame& frame)
{
    const unsigned features = bindTextures(*item.stateSet) | skyFeatures(*item.stateSet);
    CLinkedProgram* program = m_device.GetPrograms().SurfaceProgram(*item.stateSet, features);
    if (!program || !program->Get().bind())
        return;
    write(*program, "eye", CVec3<float>(float(m_eye.x), float(m_eye.y), float(m_eye.z)));
    program->Get().setUniformValue(program->LocationOf("mvpMatrix"), m_viewProjection);
    setMaterial(*program, *item.stateSet);
    setLight(*program, frame);
    m_device.GetMeshes().Draw(item.renderable);
    program->Get().release();
}

// Until its picture is there a surface shows its plain colour.
unsigned CSceneRenderer::bindTextures(const CStateSet& stateSet)
{
    const auto bind = [&](unsigned unit, const char* sampler, const char* isWanted) {
        const auto texture = stateSet.GetTextures().find(sampler);
        return texture != stateSet.GetTextures().end() && stateSet.Get(isWanted, false) &&
               m_device.GetTextures().Bind(unit, texture->second);
    };
    return (bind(BaseUnit, "baseTexture", "useBaseTexture") ? HasBaseTexture : 0U) |
           (bind(BumpUnit, "bumpTexture", "enableBump") ? HasRelief : 0U);
}

unsigned CSceneRenderer::skyFeatures(const CStateSet& stateSet) const
{
    if (!m_environment || !stateSet.Get("enableIBL", true))
        return 0;
    if (stateSet.IsUsingPreEnvironmentMap())
        return HasSky | MirrorsSky | RefractsSky;
    return stateSet.Get("useEnvironmentMap", false) ? HasSky | MirrorsSky : HasSky;
}

void CSceneRenderer::setMaterial(CLinkedProgram& program, const CStateSet& stateSet)
{
    for (const CDefault& value : defaults())
        write(program, value.uniform, value.value);
    for (const auto& uniform : stateSet.GetUniforms())
        write(program, uniform.first, uniform.second);
    write(program, "baseTexture", int(BaseUnit));
    write(program, "bumpTexture", int(BumpUnit));
}

void CSceneRenderer::setLight(CLinkedProgram& program, const CFrame& frame)
{
    QOpenGLExtraFunctions& gl = m_device.GetFunctions();
    CLight* lamp = frame.scene.FindLight("HeadLamp");
    write(program, "lampRadiance", float(lamp ? LampRadiance * lamp->GetIntensity() : 0));
    write(program, "environment", int(EnvironmentUnit));
    write(program, "brdfTable", int(BrdfUnit));
    gl.glActiveTexture(GL_TEXTURE0 + BrdfUnit);
    gl.glBindTexture(GL_TEXTURE_2D, m_device.GetSkies().GetBrdfTable());
    gl.glActiveTexture(GL_TEXTURE0 + EnvironmentUnit);
    gl.glBindTexture(GL_TEXTURE_CUBE_MAP, m_environment ? m_environment->lighting : 0);
    if (!m_environment)
        return;
    write(program, "environmentLevels", float(m_environment->levels));
    const int irradiance = program.LocationOf("irradiance");
    if (irradiance >= 0)
        program.Get().setUniformValueArray(irradiance, &m_environment->irradiance[0].x, 9, 3);
}

void CSceneRenderer::drawSky(const CFrame& frame)
{
    auto* sky = dynamic_cast<CSkybox*>(frame.viewport.GetSky().get());
    const CSkyTextures* textures = sky ? m_device.GetSkies().Of(*sky) : nullptr;
    CLinkedProgram* program = textures ? m_device.GetPrograms().Link(*sky->GetProgram()) : nullptr;
    if (sky && !textures)
        m_reason = sky->GetReason();
    if (!program || !program->Get().bind())
        return;
    if (!m_skyBody)
        m_skyBody = makeSkyBody();
    QOpenGLExtraFunctions& gl = m_device.GetFunctions();
    // Around the eye, wherever it is, and behind everything.
    QMatrix4x4 matrix = m_viewProjection;
    matrix.translate(toQt(m_eye));
    matrix.scale(float(frame.camera.GetDistance()));
    for (const auto& uniform : sky->GetProgram()->GetShader(CShader::Vertex)->GetAutoUniforms()) {
        if (uniform.second == CShader::ModelViewProjection)
            program->Get().setUniformValue(program->LocationOf(uniform.first), matrix);
    }
    write(*program, "cubeMap", int(EnvironmentUnit));
    gl.glActiveTexture(GL_TEXTURE0 + EnvironmentUnit);
    gl.glBindTexture(GL_TEXTURE_CUBE_MAP, textures->shown);
    gl.glDepthRangef(1, 1);
    gl.glDepthMask(GL_FALSE);
    m_device.GetMeshes().Draw(m_skyBody);
    gl.glDepthMask(GL_TRUE);
    gl.glDepthRangef(0, 1);
    program->Get().release();
}

}  // namespace kiv
