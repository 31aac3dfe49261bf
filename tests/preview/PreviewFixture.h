#pragma once

#include <kiv/MaterialLibrary.h>
#include <kiv/Viewer.h>

#include <QImage>
#include <QString>

/// A preview without a window over the shipped materials: a body, a material and the sky, drawn into a picture.
class PreviewFixture {
public:
    PreviewFixture();

    kiv::CViewer& viewer() { return m_viewer; }
    kiv::CAppearanceLibraryManager& manager() { return *m_library.GetMaterialManager(); }

    /// A material of the system library by its stored name; fails the program when there is none.
    kiv::CAppearanceInstancePtr material(const QString& name);

    void setShape(const QString& shape);
    void setMaterial(const kiv::CAppearanceInstancePtr& material);
    /// Shows and lights by the faces of the folder; an empty path takes the sky away.
    void setSky(const QString& folder);
    static QString shippedSky();

    QImage picture(int width, int height);

private:
    kiv::CMaterialLibrary m_library;
    kiv::CViewer m_viewer{0};
    kiv::CVisualNodePtr m_node = std::make_shared<kiv::CVisualNode>("preview");
};
