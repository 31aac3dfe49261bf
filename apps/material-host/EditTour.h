#pragma once

#include "DialogTour.h"
#include "Tour.h"

#include <QImage>
#include <QTemporaryDir>

#include <memory>

class BuildingView3D;
class MainWindow;

/// The part of the guided tour that edits a material of the project, sees each change in the preview and on the
/// building, and takes everything back.
class EditTour : private DialogTour {
public:
    /// `window` is made by a step before the first one here.
    EditTour(kiv::CMaterialLibrary& library, Tour& tour, const std::unique_ptr<MainWindow>& window)
        : DialogTour(library), m_tour(tour), m_window(window)
    {
    }

    void addSteps(std::vector<TourStep>& steps);

private:
    void open();
    void rename();
    void switchTexture();
    void changeColour();
    void changeNumber();
    void chooseTexture();
    void placeTexture();
    void makeNormalMap();
    void takeBackOne();
    void takeBackAll();

    template <typename Widget>
    Widget& control(const char* key) const;
    void expectChange(const QString& what);
    void toggle(const char* key) const;
    std::string document() const;
    QString rowText() const;
    QString ownTexture() const;

    Tour& m_tour;
    const std::unique_ptr<MainWindow>& m_window;
    QTemporaryDir m_folder;
    kiv::CAppearanceInstancePtr m_material;
    std::string m_documentBefore;
    QImage m_buildingBefore;
    QImage m_building;
    QImage m_preview;
};
