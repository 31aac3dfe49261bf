// What all viewers share: the context, which may be the host's neighbour and may be lost, and the pictures in it.
#include "MaterialTest.h"
#include "PreviewFixture.h"
#include "gl/RenderDevice.h"

#include <kiv/TextureManager.h>

#include <array>

namespace {

constexpr int Width = 60;
constexpr int Height = 40;
const char* const Brick = "Red facing brick, running bond";

using Current = kiv::CRenderDevice::CCurrent;

/// The context that the viewers draw with, and where they do when there is no window.
std::pair<QOpenGLContext*, QOffscreenSurface*> contextOfViewers()
{
    const Current current(*kiv::CRenderDevice::Existing());
    QOpenGLContext* context = QOpenGLContext::currentContext();
    return {context, static_cast<QOffscreenSurface*>(context->surface())};
}

/// As a driver does it that was reset.
void loseContext()
{
    QOpenGLContext* context = contextOfViewers().first;
    QSurfaceFormat noSuch;
    noSuch.setRenderableType(QSurfaceFormat::OpenVG);
    context->setFormat(noSuch);
    QVERIFY(!context->create() && !context->isValid());
}

std::size_t textureBytes()
{
    return kiv::CRenderDevice::Existing()->GetTextures().GetBytes();
}

/// How many textures there are on the graphics card. Names are given out in their order.
int textureCount()
{
    const Current current(*kiv::CRenderDevice::Existing());
    int count = 0;
    for (unsigned name = 1; name < 1000; ++name)
        count += QOpenGLContext::currentContext()->functions()->glIsTexture(name);
    return count;
}

/// A context of the host's own that is current while it lives.
struct HostContext {
    HostContext()
    {
        QVERIFY(context.create());
        surface.setFormat(context.format());
        surface.create();
        QVERIFY(context.makeCurrent(&surface));
    }

    bool isCurrent() const { return QOpenGLContext::currentContext() == &context && context.surface() == &surface; }

    QOpenGLContext context;
    QOffscreenSurface surface;
};

}  // namespace

class TestPreviewDevice : public MaterialTest {
    Q_OBJECT

private slots:
    void viewersGoInAnyOrder()
    {
        for (const auto& order : {std::array{0, 1, 2}, {2, 1, 0}, {1, 2, 0}}) {
            std::array<std::unique_ptr<PreviewFixture>, 3> previews;
            std::array<QImage, 3> pictures;
            const char* const names[] = {Brick, "Stainless steel, mirror", "Clear float glass"};
            for (std::size_t i = 0; i < 3; ++i) {
                previews[i] = std::make_unique<PreviewFixture>();
                previews[i]->setSky(PreviewFixture::shippedSky());
                previews[i]->setMaterial(previews[i]->material(names[i]));
                pictures[i] = previews[i]->picture(Width, Height);
            }
            QVERIFY(pictures[0] != pictures[1] && pictures[1] != pictures[2]);
            for (const int gone : order) {
                for (std::size_t i = 0; i < 3; ++i)
                    QVERIFY(!previews[i] || previews[i]->picture(Width, Height) == pictures[i]);
                previews[std::size_t(gone)].reset();
            }
        }
    }

    void drawsAgainWhatWasReleased()
    {
        PreviewFixture preview;
        preview.setSky(PreviewFixture::shippedSky());
        preview.setMaterial(preview.material(Brick));
        const QImage picture = preview.picture(Width, Height);
        for (const bool withPrograms : {false, true}) {
            kiv::CTextureManager::ReleaseTextures();
            if (withPrograms)
                kiv::CShaderProgramManager::GetInstance().UnloadAll();
            QCOMPARE(preview.picture(Width, Height), picture);
        }
        QCOMPARE(preview.viewer().GetReason(), std::string());
    }

    void leavesTheHostsContextAlone()
    {
        HostContext host;
        {
            PreviewFixture preview;
            QVERIFY(host.isCurrent());
            preview.setSky(PreviewFixture::shippedSky());
            preview.setMaterial(preview.material(Brick));
            QVERIFY(!preview.picture(Width, Height).isNull());
            QVERIFY(host.isCurrent());
            kiv::CTextureManager::ReleaseTextures();
            QVERIFY(host.isCurrent());
        }
        QVERIFY(host.isCurrent());
        host.context.doneCurrent();
        PreviewFixture preview;
        QVERIFY(!preview.picture(Width, Height).isNull());
        QVERIFY(!QOpenGLContext::currentContext());
    }

    void oneCopyForAFile()
    {
        QTemporaryDir folder;
        PreviewFixture preview;
        const auto show = [&](const QString& name) {
            const auto material = preview.greenMaterial();
            PreviewFixture::setTexture(material, folder.filePath(name));
            preview.setMaterial(material);
            QVERIFY(!preview.picture(Width, Height).isNull());
        };
        QVERIFY(!preview.picture(Width, Height).isNull());
        kiv::CTextureManager::ReleaseTextures();
        const int others = textureCount();
        for (const char* name : {"one.png", "two.png"})
            PreviewFixture::writePicture(folder.filePath(name), {64, 64}, Qt::red, Qt::blue);
        show("one.png");
        const std::size_t one = textureBytes();
        QVERIFY(one >= 64 * 64 * 4);
        show("one.png");
        QCOMPARE(textureBytes(), one);
        show("two.png");
        QCOMPARE(textureBytes(), 2 * one);

        preview.setSky(PreviewFixture::shippedSky());
        QVERIFY(!preview.picture(Width, Height).isNull());
        QVERIFY(textureCount() >= others + 4);
        kiv::CTextureManager::ReleaseTextures();
        QCOMPARE(textureBytes(), std::size_t(0));
        QCOMPARE(textureCount(), others);
    }

    void contextThatFailsForAWhile()
    {
        PreviewFixture preview;
        preview.setSky(PreviewFixture::shippedSky());
        preview.setMaterial(preview.material(Brick));
        const QImage picture = preview.picture(Width, Height);
        QOffscreenSurface* surface = contextOfViewers().second;
        surface->destroy();
        QVERIFY(preview.picture(Width, Height).isNull());
        QVERIFY(!preview.viewer().GetReason().empty());
        kiv::CTextureManager::ReleaseTextures();
        PreviewFixture meanwhile;
        QVERIFY(meanwhile.picture(Width, Height).isNull());
        surface->create();
        QCOMPARE(preview.picture(Width, Height), picture);
        QCOMPARE(preview.viewer().GetReason(), std::string());
        QVERIFY(!meanwhile.picture(Width, Height).isNull());
    }

    void contextThatIsLost()
    {
        PreviewFixture preview;
        preview.setSky(PreviewFixture::shippedSky());
        preview.setMaterial(preview.material(Brick));
        QWidget widget;
        widget.resize(Width, Height);
        kiv::CViewer shown(widget.winId());
        widget.show();
        QTRY_VERIFY(shown.GetFrameCount() > 0);
        const QImage picture = preview.picture(Width, Height);
        loseContext();
        QCOMPARE(preview.picture(Width, Height), picture);
        QCOMPARE(preview.viewer().GetReason(), std::string());
        const unsigned before = shown.GetFrameCount();
        shown.SetDirty();
        QTRY_VERIFY(shown.GetFrameCount() > before);
        QCOMPARE(shown.GetReason(), std::string());
    }

    // The names of what was lost mean something else in the host's context.
    void deletesNothingOfTheHost()
    {
        HostContext host;
        std::array<unsigned, 100> names{};
        QOpenGLFunctions& gl = *host.context.functions();
        gl.glGenTextures(GLsizei(names.size()), names.data());
        for (const unsigned name : names)
            gl.glBindTexture(GL_TEXTURE_2D, name);
        {
            PreviewFixture preview;
            preview.setSky(PreviewFixture::shippedSky());
            preview.setMaterial(preview.material(Brick));
            QVERIFY(!preview.picture(Width, Height).isNull());
            contextOfViewers().second->destroy();
        }
        QVERIFY(host.isCurrent());
        for (const unsigned name : names)
            QVERIFY(gl.glIsTexture(name));
    }
};

MATERIAL_TEST_MAIN(TestPreviewDevice)
#include "TestPreviewDevice.moc"
