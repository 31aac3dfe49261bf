#pragma once

#include "DialogTour.h"
#include "Tour.h"

#include <QImage>

#include <memory>

class BuildingView3D;
class MainWindow;

/// The part of the guided tour that looks at the building in space and at materials in the preview.
class SpaceTour : private DialogTour {
public:
    /// `window` is made by a step before the first one here.
    SpaceTour(kiv::CMaterialLibrary& library, Tour& tour, const std::unique_ptr<MainWindow>& window)
        : DialogTour(library), m_tour(tour), m_window(window)
    {
    }

    void addSteps(std::vector<TourStep>& steps);

private:
    void show();
    void orbit();
    void select();
    void apply();
    void previewShapes();
    void previewShading();
    void previewBackground();
    void tenMaterials();
    void keep();
    void turnBack();
    void showElevation();

    BuildingView3D& view() const;
    QPoint pointIn(const QString& elementId) const;
    void drag(const QPoint& by);
    void choosePreview(const char* box, const QString& text);

    Tour& m_tour;
    const std::unique_ptr<MainWindow>& m_window;
    kiv::CAppearanceInstancePtr m_last;
    QImage m_front;
};
