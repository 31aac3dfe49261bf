#pragma once

#include <kiv/MaterialLibrary.h>
#include <kiv/Viewer.h>

#include <QColor>
#include <QDateTime>
#include <QImage>
#include <QString>

#include <functional>

/// A preview without a window over the shipped materials: a body, a material and the sky, drawn into a picture.
class PreviewFixture {
public:
    PreviewFixture();

    kiv::CViewer& viewer() { return m_viewer; }
    kiv::CAppearanceLibraryManager& manager() { return *m_library.GetMaterialManager(); }

    /// A material of the system library by its stored name; fails the program when there is none.
    kiv::CAppearanceInstancePtr material(const QString& name);

    /// One of the type with every property, green where its texture cannot be shown.
    kiv::CAppearanceInstancePtr greenMaterial();
    static void setTexture(const kiv::CAppearanceInstancePtr& material, const QString& file);

    void setShape(const QString& shape);
    /// The box from the front, without perspective.
    void showFrontOfBox();
    /// The same without light, so that nothing but the texture decides what is seen.
    void showTextureOnly();
    void setMaterial(const kiv::CAppearanceInstancePtr& material);
    const kiv::CVisualNodePtr& node() const { return m_node; }
    /// Shows and lights by the faces of the folder; an empty path takes the sky away.
    void setSky(const QString& folder);
    static QString shippedSky();
    /// Writes six faces of one colour each, asked for by "back", "front", "left", "right", "top" and "bottom". Answers
    /// the folder.
    static QString makeSky(const QString& folder, const std::function<QColor(const QString&)>& color);
    static QString skyFace(const QString& folder, const QString& side);
    /// A picture whose left half has one colour and whose right half has another.
    static void writePicture(const QString& path, const QSize& size, const QColor& left, const QColor& right);
    static void setModified(const QString& path, const QDateTime& time);

    QImage picture(int width, int height);

private:
    kiv::CMaterialLibrary m_library;
    kiv::CViewer m_viewer{0};
    kiv::CVisualNodePtr m_node = std::make_shared<kiv::CVisualNode>("preview");
};
