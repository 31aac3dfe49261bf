#pragma once

#include <kiv/Camera.h>
#include <kiv/PrimitiveRenderable.h>
#include <kiv/Sky.h>

#include <QImage>
#include <QString>

/// What is drawn by all sides of a comparison.
struct PreviewScene {
    kiv::CPrimitiveRenderablePtr body;
    kiv::CCamera camera;
    QString baseTexture;
    QString normalMap;
    float roughness = 0.5F;
    float ior = 1.5F;
    kiv::CSkybox::Faces sky;  ///< back, front, left, right, top, bottom
    QImage panorama;          ///< the same sky, for who takes light from panoramas only
    int samples = 4;          ///< a pixel
    float anisotropy = 4;     ///< as the viewer has it on a graphics card
};
