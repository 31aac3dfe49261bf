#include "PreviewFixture.h"

#include <PreviewBodies.h>
#include <PreviewSkybox.h>

#include <Measured.h>

#include <QFile>

PreviewFixture::PreviewFixture()
{
    const std::wstring data = QStringLiteral(MATERIAL_DATA_DIR).toStdWString();
    m_library.Open({data, data + L"/textures", {}});
    m_viewer.SetDefault();
    m_viewer.GetOptions().SetViewAxesEnabled(false);
    m_viewer.GetCamera().SetType(0, 1);
    m_viewer.GetScene().GetRoot()->AddChild(m_node);
    m_viewer.GetScene().FindLight("HeadLamp")->SetIntensity(1.0);
    m_viewer.SetViewPoint(0);
    setShape("Sphere");
}

kiv::CAppearanceInstancePtr PreviewFixture::material(const QString& name)
{
    for (const auto& entry : *manager().GetSystemLibrary()) {
        if (entry.second->GetName() == name.toStdString())
            return entry.second;
    }
    qFatal("no material \"%s\"", qPrintable(name));
}

kiv::CAppearanceInstancePtr PreviewFixture::greenMaterial()
{
    auto material = manager().CreateAppearanceInstance(manager().FindTemplate("Generic"), "green");
    material->SetDiffuse({0, 1, 0, 1});
    return material;
}

void PreviewFixture::setTexture(const kiv::CAppearanceInstancePtr& material, const QString& file)
{
    material->SetUseDiffuseTexture(true);
    material->GetDiffuseTexture()->SetTextureFile(file.toStdString());
}

void PreviewFixture::showFrontOfBox()
{
    setShape("Box");
    m_viewer.GetCamera().SetType(kiv::CCamera::Orthographic, 1);
    m_viewer.SetViewPoint(kiv::CCamera::ViewFront);
}

void PreviewFixture::showTextureOnly()
{
    manager().SetShaderLevelOfDetail(kiv::CAppearanceLibraryManager::ShaderNone);
    showFrontOfBox();
}

void PreviewFixture::setShape(const QString& shape)
{
    m_node->SetRenderable(MakePreviewBody(shape));
    m_viewer.ZoomAll();
}

void PreviewFixture::setMaterial(const kiv::CAppearanceInstancePtr& material)
{
    GRefPtr<kiv::CStateSet> stateSet(new kiv::CStateSet);
    manager().UsePreEnvironmentMap(true);
    manager().Translate(material, stateSet.get());
    manager().UsePreEnvironmentMap(false);
    m_node->SetStateSet(stateSet.get());
}

void PreviewFixture::setSky(const QString& folder)
{
    SetUpPreviewSkybox(m_viewer, folder.toStdWString());
}

QString PreviewFixture::shippedSky()
{
    return QStringLiteral(MATERIAL_DATA_DIR "/textures/skybox/");
}

QString PreviewFixture::skyFace(const QString& folder, const QString& side)
{
    return folder + "/cube01_" + side + ".jpg";
}

QString PreviewFixture::makeSky(const QString& folder, const std::function<QColor(const QString&)>& color)
{
    for (const char* side : {"back", "front", "left", "right", "top", "bottom"}) {
        QImage face(32, 32, QImage::Format_RGB32);
        face.fill(color(side));
        // The name asks for JPEG; a picture is known by its content, and this one must be exact.
        if (!face.save(skyFace(folder, side), "PNG"))
            qFatal("cannot write a face");
    }
    return folder;
}

void PreviewFixture::writePicture(const QString& path, const QSize& size, const QColor& left, const QColor& right)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(left);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = size.width() / 2; x < size.width() && size.width() > 1; ++x)
            image.setPixelColor(x, y, right);
    }
    if (!image.save(path, "PNG"))
        qFatal("cannot write %s", qPrintable(path));
}

void PreviewFixture::setModified(const QString& path, const QDateTime& time)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite) || !file.setFileTime(time, QFileDevice::FileModificationTime))
        qFatal("cannot change %s", qPrintable(path));
}

QImage PreviewFixture::picture(int width, int height)
{
    return pictureOf(m_viewer, width, height);
}
