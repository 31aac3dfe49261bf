#pragma once

#include <kiv/ShaderProgramManager.h>
#include <kiv/Sky.h>

#include <optional>
#include <string>

/// The program that draws the preview's sky box; one for the process until the programs are unloaded.
kiv::CShaderProgramPtr PreviewSkyboxProgram();

/// The six pictures of the folder (a stored path), whether they are there or not. Nothing when there is no such folder.
std::optional<kiv::CSkybox::Faces> PreviewSkyboxFaces(const std::wstring& folder);
