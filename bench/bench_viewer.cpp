// Drawing the default sphere against VTK drawing the same mesh with the same pictures, sky, samples and filtering, off
// screen and read back on both sides; and switching between two materials against not doing so.
// SAVE_PICTURES=folder writes what both drew.
#include "PreviewScene.h"
#include "Ratios.h"
#ifdef BENCH_WITH_VTK
#include "VtkPreview.h"
#endif

#include <kiv/MaterialLibrary.h>
#include <kiv/Viewer.h>

#include <QApplication>
#include <QOffscreenSurface>

#include <PreviewBodies.h>
#include <PreviewSkybox.h>
#include <gl/SoftwareRenderer.h>

#include <cmath>
#include <cstdio>

namespace {

constexpr int WarmUpFrames = 3;
constexpr double SphereRadius = 0.108;  // with a margin
const char* const Bricks[] = {"Red facing brick, running bond", "White facing brick, stack bond"};

const QString DataFolder = QStringLiteral(MATERIAL_DATA_DIR);

class Materials {
public:
    Materials()
    {
        const std::wstring data = DataFolder.toStdWString();
        m_library.Open({data, data + L"/textures", {}});
        manager().UsePreEnvironmentMap(true);
    }

    kiv::CAppearanceLibraryManager& manager() { return *m_library.GetMaterialManager(); }

    kiv::CAppearanceInstancePtr find(const std::string& name)
    {
        for (const auto& entry : *manager().GetSystemLibrary()) {
            if (entry.second->GetName() == name)
                return entry.second;
        }
        return nullptr;
    }

    GRefPtr<kiv::CStateSet> translate(const kiv::CAppearanceInstancePtr& material)
    {
        GRefPtr<kiv::CStateSet> stateSet(new kiv::CStateSet);
        manager().Translate(material, stateSet.get());
        return stateSet;
    }

private:
    kiv::CMaterialLibrary m_library;
};

/// The scene drawn by the viewer.
class Preview {
public:
    Preview(const PreviewScene& scene, kiv::CStateSet* stateSet, int width, int height)
        : m_width(width), m_height(height)
    {
        m_viewer.GetOptions().SetViewAxesEnabled(false);
        m_node->SetRenderable(scene.body);
        m_node->SetStateSet(stateSet);
        m_viewer.GetScene().GetRoot()->AddChild(m_node);
        m_viewer.GetViewport().SetSkyBox(true, scene.sky, PreviewSkyboxProgram());
        const auto sky = std::dynamic_pointer_cast<kiv::CSkybox>(m_viewer.GetViewport().GetSky());
        sky->SetImageBasedLightingEnabled(true);
        auto* pass = dynamic_cast<kiv::CRenderScenePass*>(m_viewer.GetRenderPassChain().Find("kiv_main_pass"));
        pass->GetPoolRenderer().SetEnvironment(sky);
        m_viewer.GetCamera() = scene.camera;
    }

    void SetMaterial(kiv::CStateSet* stateSet) { m_node->SetStateSet(stateSet); }

    bool Draw()
    {
        m_picture = m_viewer.Snapshot(m_width, m_height);
        return m_picture && m_viewer.GetReason().empty();
    }

    bool Save(const QString& path) const { return m_picture->SaveToFile(path.toStdWString()); }

private:
    int m_width;
    int m_height;
    kiv::CViewer m_viewer{0};
    kiv::CVisualNodePtr m_node = std::make_shared<kiv::CVisualNode>("preview");
    kiv::CImagePtr m_picture;
};

template <typename Side>
void save(Side& side, const std::string& name)
{
    const QString folder = qEnvironmentVariable("SAVE_PICTURES");
    if (!folder.isEmpty())
        side.Save(folder + "/" + QString::fromStdString(name) + ".png");
}

/// `make` makes a side of the comparison, which stays while its frames are measured.
template <typename Make>
void frames(benchmark::State& state, const std::string& name, const Make& make)
{
    const auto side = make();
    for (int i = 0; i < WarmUpFrames; ++i)
        side->Draw();
    for ([[maybe_unused]] auto _ : state) {
        if (!side->Draw())
            state.SkipWithError("nothing drawn");
    }
    save(*side, name);
}

template <typename Make>
void firstFrame(benchmark::State& state, const Make& make)
{
    for ([[maybe_unused]] auto _ : state) {
        const auto side = make();
        if (!side->Draw())
            state.SkipWithError("nothing drawn");
    }
}

template <typename Make>
void registerSide(const std::string& name, const Make& make)
{
    for (const auto& [size, width, height] : {std::tuple("300x200", 300, 200), std::tuple("800x600", 800, 600)}) {
        const std::string full = name + size;
        benchmark::RegisterBenchmark(full.c_str(),
                                     [=, width = width, height = height](auto& state) {
                                         frames(state, full, [&] { return make(width, height); });
                                     })
            ->Unit(benchmark::kMillisecond)
            ->MeasureProcessCPUTime()
            ->UseRealTime();
    }
    benchmark::RegisterBenchmark((name + "First").c_str(),
                                 [=](auto& state) { firstFrame(state, [&] { return make(300, 200); }); })
        ->Unit(benchmark::kMillisecond)
        ->MeasureProcessCPUTime()
        ->UseRealTime()
        ->Iterations(1);
}

void switching(benchmark::State& state, const PreviewScene& scene, Materials& materials)
{
    const kiv::CAppearanceInstancePtr both[] = {materials.find(Bricks[0]), materials.find(Bricks[1])};
    Preview preview(scene, materials.translate(both[0]).get(), 300, 200);
    std::size_t next = 0;
    const auto drawNext = [&] {
        preview.SetMaterial(materials.translate(both[++next % 2]).get());
        return preview.Draw();
    };
    for (int i = 0; i < 2 * WarmUpFrames; ++i)
        drawNext();
    for ([[maybe_unused]] auto _ : state) {
        if (!drawNext())
            state.SkipWithError("nothing drawn");
    }
}

/// The faces as a panorama: the directions around from left to right, up at the upper edge.
QImage panoramaOf(const kiv::CSkybox::Faces& files)
{
    enum { Back, Front, Left, Right, Top, Bottom };
    constexpr int height = 512;
    constexpr double pi = 3.14159265358979323846;
    std::vector<QImage> faces;
    for (const std::wstring& file : files)
        faces.push_back(QImage(QString::fromStdWString(file)).convertToFormat(QImage::Format_RGB32));
    const auto at = [&](int face, double right, double down) {
        const QImage& picture = faces[std::size_t(face)];
        const double side = picture.width() - 1;
        return picture.pixel(int((right + 1) / 2 * side), int((down + 1) / 2 * side));
    };
    QImage panorama(2 * height, height, QImage::Format_RGB32);
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < 2 * height; ++column) {
            const double around = (column + 0.5) / height * pi;
            const double up = (0.5 - (row + 0.5) / height) * pi;
            const double x = std::sin(around) * std::cos(up);
            const double y = -std::cos(around) * std::cos(up);
            const double z = std::sin(up);
            const double most = std::max({std::abs(x), std::abs(y), std::abs(z)});
            const QRgb color = most == z    ? at(Top, x / z, y / z)
                               : most == -z ? at(Bottom, -x / z, y / z)
                               : most == y  ? at(Back, x / y, -z / y)
                               : most == -y ? at(Front, x / y, z / y)
                               : most == x  ? at(Right, -y / x, -z / x)
                                            : at(Left, -y / x, z / x);
            panorama.setPixel(column, row, color);
        }
    }
    return panorama;
}

/// There the viewer does not filter along the view, so the other side must not either.
bool isDrawnByProcessor()
{
    QOffscreenSurface surface;
    surface.create();
    QOpenGLContext context;
    return context.create() && context.makeCurrent(&surface) && kiv::IsSoftwareRenderer();
}

PreviewScene brickSphere(const kiv::CAppearanceLibraryManager& manager, const kiv::CAppearanceInstance& brick,
                         const kiv::CStateSet& stateSet)
{
    const auto path = [&](const kiv::CAppearanceInstancePtr& texture) {
        return QString::fromStdString(manager.ResolvePath(texture->GetTextureFile()));
    };
    PreviewScene scene;
    scene.body = MakePreviewBody("Sphere");
    scene.camera.Fit({}, SphereRadius, 1);
    scene.baseTexture = path(brick.GetDiffuseTexture());
    scene.normalMap = path(brick.GetBumpTexture());
    scene.roughness = stateSet.Get("roughness", scene.roughness);
    scene.ior = stateSet.Get("ior", scene.ior);
    scene.sky = PreviewSkyboxFaces((DataFolder + "/textures/skybox").toStdWString()).value();
    scene.panorama = panoramaOf(scene.sky);
    if (isDrawnByProcessor())
        scene.anisotropy = 1;
    return scene;
}

}  // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    Materials materials;
    const auto brick = materials.find(Bricks[0]);
    if (!brick || !materials.find(Bricks[1])) {
        std::fprintf(stderr, "the shipped materials are not there\n");
        return 1;
    }
    const GRefPtr<kiv::CStateSet> stateSet = materials.translate(brick);
    const PreviewScene scene = brickSphere(materials.manager(), *brick, *stateSet);

    registerSide("viewer", [&](int width, int height) {
        return std::make_unique<Preview>(scene, stateSet.get(), width, height);
    });
#ifdef BENCH_WITH_VTK
    registerSide("vtk", [&](int width, int height) { return std::make_unique<VtkPreview>(scene, width, height); });
#else
    std::printf("VTK was not found when this was built: not compared\n");
#endif
    benchmark::RegisterBenchmark("switching", [&](auto& state) { switching(state, scene, materials); })
        ->Unit(benchmark::kMillisecond)
        ->MeasureProcessCPUTime()
        ->UseRealTime();
    return runBenchmarks(argc, argv,
                         {{"frame of the brick sphere at 300 x 200 / VTK", "viewer300x200", "vtk300x200", 0.9},
                          {"frame of the brick sphere at 800 x 600 / VTK", "viewer800x600", "vtk800x600", 0.9},
                          {"from making the viewer to its first frame / VTK", "viewerFirst", "vtkFirst", 0.1},
                          {"frame with another material / steady frame", "switching", "viewer300x200", 2.0}});
}
