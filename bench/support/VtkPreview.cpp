#include "VtkPreview.h"

#include <QImage>

#include <vtkActor.h>
#include <vtkCamera.h>
#include <vtkCellArray.h>
#include <vtkFloatArray.h>
#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkOpenGLRenderer.h>
#include <vtkPointData.h>
#include <vtkPolyData.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>
#include <vtkRenderWindow.h>
#include <vtkSkybox.h>
#include <vtkTexture.h>
#include <vtkUnsignedCharArray.h>

#include <cstring>

namespace {

// VTK's rows start at the bottom.
vtkNew<vtkImageData> imageOf(const QImage& read)
{
    const QImage picture = read.mirrored().convertToFormat(QImage::Format_RGB888);
    vtkNew<vtkImageData> image;
    image->SetDimensions(picture.width(), picture.height(), 1);
    image->AllocateScalars(VTK_UNSIGNED_CHAR, 3);
    auto* bytes = static_cast<unsigned char*>(image->GetScalarPointer());
    const std::size_t row = std::size_t(picture.width()) * 3;
    for (int y = 0; y < picture.height(); ++y)
        std::memcpy(bytes + std::size_t(y) * row, picture.constScanLine(y), row);
    return image;
}

void setFiltering(vtkTexture& texture, const PreviewScene& scene)
{
    texture.InterpolateOn();
    texture.MipmapOn();
    texture.SetMaximumAnisotropicFiltering(scene.anisotropy);
}

vtkNew<vtkTexture> textureOf(const QString& path, bool isColor, const PreviewScene& scene)
{
    vtkNew<vtkTexture> texture;
    texture->SetInputData(imageOf(QImage(path)));
    texture->SetUseSRGBColorSpace(isColor);
    texture->RepeatOn();
    setFiltering(*texture, scene);
    return texture;
}

vtkNew<vtkTexture> cubeOf(const PreviewScene& scene)
{
    constexpr int order[] = {3, 2, 5, 4, 0, 1};
    vtkNew<vtkTexture> cube;
    cube->CubeMapOn();
    for (int i = 0; i < 6; ++i)
        cube->SetInputDataObject(i, imageOf(QImage(QString::fromStdWString(scene.sky[std::size_t(order[i])]))));
    setFiltering(*cube, scene);
    return cube;
}

template <typename Vectors>
vtkNew<vtkFloatArray> arrayOf(const Vectors& vectors, int components, const char* name)
{
    vtkNew<vtkFloatArray> array;
    array->SetName(name);
    array->SetNumberOfComponents(components);
    array->SetNumberOfTuples(vtkIdType(vectors.size()));
    for (std::size_t i = 0; i < vectors.size(); ++i)
        array->SetTypedTuple(vtkIdType(i), &vectors[i].x);
    return array;
}

vtkNew<vtkPolyData> meshOf(const kiv::CPrimitiveRenderable& body)
{
    vtkNew<vtkPoints> points;
    points->SetData(arrayOf(body.GetVertexArray(), 3, "points"));
    vtkNew<vtkCellArray> triangles;
    const std::vector<unsigned>& indices = body.GetIndexArray();
    for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
        const vtkIdType corners[] = {vtkIdType(indices[i]), vtkIdType(indices[i + 1]), vtkIdType(indices[i + 2])};
        triangles->InsertNextCell(3, corners);
    }
    vtkNew<vtkPolyData> mesh;
    mesh->SetPoints(points);
    mesh->SetPolys(triangles);
    mesh->GetPointData()->SetNormals(arrayOf(body.GetNormalArray(), 3, "normals"));
    mesh->GetPointData()->SetTCoords(arrayOf(body.GetTextureArray(0), 2, "coordinates"));
    // Three components of ours and the hand, which VTK does without.
    std::vector<kiv::CVec3<float>> tangents;
    for (const auto& t : body.GetTangentArray())
        tangents.emplace_back(t.x, t.y, t.z);
    mesh->GetPointData()->SetTangents(arrayOf(tangents, 3, "tangents"));
    return mesh;
}

}  // namespace

struct VtkPreview::Private {
    vtkNew<vtkRenderWindow> window;
    vtkNew<vtkOpenGLRenderer> renderer;
    vtkNew<vtkActor> actor;
    vtkNew<vtkSkybox> sky;
    vtkNew<vtkUnsignedCharArray> pixels;

    void addBody(const PreviewScene& scene)
    {
        vtkNew<vtkPolyDataMapper> mapper;
        mapper->SetInputData(meshOf(*scene.body));
        actor->SetMapper(mapper);
        vtkProperty* property = actor->GetProperty();
        property->SetInterpolationToPBR();
        property->BackfaceCullingOn();
        property->SetMetallic(0);
        property->SetRoughness(double(scene.roughness));
        property->SetBaseIOR(double(scene.ior));
        property->SetBaseColorTexture(textureOf(scene.baseTexture, true, scene));
        property->SetNormalTexture(textureOf(scene.normalMap, false, scene));
        renderer->AddActor(actor);
    }

    void setCamera(const kiv::CCamera& from)
    {
        constexpr double degrees = 180 / 3.14159265358979323846;
        vtkCamera* camera = renderer->GetActiveCamera();
        camera->SetFocalPoint(from.GetCentre().x, from.GetCentre().y, from.GetCentre().z);
        camera->SetPosition(from.GetEye().x, from.GetEye().y, from.GetEye().z);
        camera->SetViewUp(from.GetUp().x, from.GetUp().y, from.GetUp().z);
        camera->SetViewAngle(kiv::CCamera::FieldOfView * degrees);
        renderer->SetEnvironmentUp(0, 0, 1);
        renderer->SetEnvironmentRight(1, 0, 0);
        renderer->ResetCameraClippingRange();
    }

    void addSky(const PreviewScene& scene)
    {
        // Of panoramas VTK makes spherical harmonics, as the viewer does; of a cube it makes another cube, which takes
        // minutes without a graphics card.
        vtkNew<vtkTexture> panorama;
        panorama->SetInputData(imageOf(scene.panorama));
        setFiltering(*panorama, scene);
        renderer->UseImageBasedLightingOn();
        renderer->UseSphericalHarmonicsOn();
        renderer->SetEnvironmentTexture(panorama, true);
        sky->SetProjectionToCube();
        sky->SetTexture(cubeOf(scene));
        renderer->AddActor(sky);
    }
};

VtkPreview::VtkPreview(const PreviewScene& scene, int width, int height) : m(std::make_unique<Private>())
{
    m->window->SetOffScreenRendering(1);
    m->window->SetMultiSamples(scene.samples);
    m->window->SetSize(width, height);
    m->window->AddRenderer(m->renderer);
    m->addBody(scene);
    m->addSky(scene);
    m->setCamera(scene.camera);
}

VtkPreview::~VtkPreview() = default;

bool VtkPreview::Draw()
{
    m->window->Render();
    const int* size = m->window->GetSize();
    m->window->GetRGBACharPixelData(0, 0, size[0] - 1, size[1] - 1, 0, m->pixels);
    return m->pixels->GetNumberOfTuples() == vtkIdType(size[0]) * size[1];
}

bool VtkPreview::Save(const QString& path) const
{
    const int* size = m->window->GetSize();
    const QImage picture(m->pixels->GetPointer(0), size[0], size[1], QImage::Format_RGBX8888);
    return picture.mirrored().save(path);
}
