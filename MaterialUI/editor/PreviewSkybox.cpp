#include "PreviewSkybox.h"

#include <kiv/Viewer.h>
#include <kiv/system/StoredPath.h>

#include <QFileInfo>

namespace {

const char* const VertexSource = "uniform mat4 mvpMatrix;\n"
                                 "attribute vec3 attrVertex;\n"
                                 "varying vec3 texCoord;\n"
                                 "void main()\n"
                                 "{\n"
                                 "    texCoord = normalize(attrVertex);\n"
                                 "    gl_Position =  mvpMatrix * vec4(attrVertex, 1.0);\n"
                                 "}";

// The world has z up, cube maps have y: what lights the body has to be looked up in the same way.
const char* const FragmentSource =
    "uniform samplerCube cubeMap;\n"
    "varying vec3 texCoord;\n"
    "void main()\n"
    "{\n"
    "    gl_FragColor = textureCube(cubeMap, vec3(texCoord.x, -texCoord.z, texCoord.y));\n"
    "}";

const wchar_t* const FaceNames[] = {L"cube01_back.jpg",  L"cube01_front.jpg", L"cube01_left.jpg",
                                    L"cube01_right.jpg", L"cube01_top.jpg",   L"cube01_bottom.jpg"};

kiv::CShaderPtr vertexShader(kiv::CShaderProgramManager& manager)
{
    const auto shader =
        manager.GetOrCreateShader("kiv_materiallib_preview_skybox_vs", kiv::CShader::Vertex, kiv::CShader::GLSL);
    if (!shader->IsComplete()) {
        shader->LoadShaderFromStr(VertexSource);
        shader->AddAutoUniform("mvpMatrix", kiv::CShader::ModelViewProjection);
    }
    return shader;
}

kiv::CShaderPtr fragmentShader(kiv::CShaderProgramManager& manager)
{
    const auto shader =
        manager.GetOrCreateShader("kiv_materiallib_preview_skybox_fs", kiv::CShader::Fragment, kiv::CShader::GLSL);
    if (!shader->IsComplete())
        shader->LoadShaderFromStr(FragmentSource);
    return shader;
}

}  // namespace

kiv::CShaderProgramPtr PreviewSkyboxProgram()
{
    auto& manager = kiv::CShaderProgramManager::GetInstance();
    const auto program = manager.GetOrCreate("kiv_materiallib_preview_skybox", kiv::CShader::GLSL);
    if (!program->IsComplete()) {
        program->SetShader(vertexShader(manager));
        program->SetShader(fragmentShader(manager));
        program->SetAutoAttributeLocations(true);
    }
    return program;
}

std::optional<kiv::CSkybox::Faces> PreviewSkyboxFaces(const std::wstring& folder)
{
    if (folder.empty() || !QFileInfo(kiv::system::NativePath(folder)).isDir())
        return {};
    kiv::CSkybox::Faces faces;
    for (std::size_t i = 0; i < faces.size(); ++i)
        faces[i] = kiv::system::JoinPath(folder, FaceNames[i]).toStdWString();
    return faces;
}

void SetUpPreviewSkybox(kiv::CViewer& viewer, const std::wstring& folder)
{
    const auto faces = PreviewSkyboxFaces(folder);
    viewer.GetViewport().SetSkyBox(faces.has_value(), faces.value_or(kiv::CSkybox::Faces()), PreviewSkyboxProgram());
    const auto skybox = std::dynamic_pointer_cast<kiv::CSkybox>(viewer.GetViewport().GetSky());
    if (skybox)
        skybox->SetImageBasedLightingEnabled(true);
    auto* pass = dynamic_cast<kiv::CRenderScenePass*>(viewer.GetRenderPassChain().Find("kiv_main_pass"));
    if (pass)
        pass->GetPoolRenderer().SetEnvironment(skybox);
    viewer.SetDirty();
}
