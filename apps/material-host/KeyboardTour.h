#pragma once

#include "DialogTour.h"
#include "Tour.h"

#include <QImage>
#include <QTemporaryDir>

#include <memory>

class MainWindow;
class QAbstractItemView;

/// The part of the guided tour that does without the mouse: from the list of elements through the dialog, copying,
/// renaming, collecting, converting, exporting, deleting and importing, and out again by Escape and by Return.
class KeyboardTour : private DialogTour {
public:
    /// `window` is made by a step before the first one here.
    KeyboardTour(kiv::CMaterialLibrary& library, Tour& tour, const std::unique_ptr<MainWindow>& window)
        : DialogTour(library), m_tour(tour), m_window(window)
    {
    }

    void addSteps(std::vector<TourStep>& steps);

private:
    void open();
    void goThrough();
    void copy();
    void rename();
    void collect();
    void convert();
    void exportMaterial();
    void deleteUsed();
    void importMaterial();
    void takeBackOne();
    void cancel();
    void apply();

    void selectWall() const;
    static void tabTo(const QWidget& widget);
    static void goTo(const QAbstractItemView& view, const std::function<bool()>& isThere, const QString& what);
    void goToStone() const;
    void goToMaterial(const char* browserName, const QString& id) const;
    void chooseByArrows(const QString& entry) const;
    QString exportedFile() const;

    Tour& m_tour;
    const std::unique_ptr<MainWindow>& m_window;
    QTemporaryDir m_folder;
    Documents m_libraryBefore;
    QImage m_drawingBefore;
    QString m_copy;
};
