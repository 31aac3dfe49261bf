#pragma once

#include <kiv/ShaderProgramManager.h>
#include <kiv/Sky.h>

#include <optional>
#include <string>

namespace kiv {
class CViewer;
}

/// The program that draws the preview's sky box; one for the process until the programs are unloaded.
kiv::CShaderProgramPtr PreviewSkyboxProgram();

/// The six pictures of the folder (a stored path), whether they are there or not. Nothing when there is no such folder.
std::optional<kiv::CSkybox::Faces> PreviewSkyboxFaces(const std::wstring& folder);

/// Shows the sky of the folder (a stored path) in the viewer and lights its scene by it. Without such a folder there is
/// neither.
void SetUpPreviewSkybox(kiv::CViewer& viewer, const std::wstring& folder);
