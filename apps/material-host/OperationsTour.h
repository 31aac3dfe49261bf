#pragma once

#include "DialogTour.h"
#include "Tour.h"

#include <QImage>
#include <QMap>
#include <QTemporaryDir>

#include <memory>

class MainWindow;

/// The part of the guided tour that copies, renames, collects, converts, deletes, exports and imports materials and
/// drags them onto the building, all with the mouse, and takes everything back.
class OperationsTour : private DialogTour {
public:
    /// `window` is made by a step before the first one here.
    OperationsTour(kiv::CMaterialLibrary& library, Tour& tour, const std::unique_ptr<MainWindow>& window)
        : DialogTour(library), m_tour(tour), m_window(window)
    {
    }

    void addSteps(std::vector<TourStep>& steps);

private:
    void open();
    void copy();
    void rename();
    void collect();
    void collectAgain();
    void convert();
    void exportMaterial();
    void deleteUsed();
    void deleteUnused();
    void importMaterial();
    void removeFavorites();
    void dragToElevation();
    void dragToSpace();
    void dropFile();
    void takeBackOne();
    void cancel();
    void keepCopy();

    void choose(const char* browserName, const QString& id, const QString& entry, const QString& picture = {}) const;
    void pressInWindow(int key) const;
    void dragToRoof(QWidget& view, const kiv::CAppearanceInstancePtr& material);
    kiv::CAppearanceLibraryPtr favorites() const;
    kiv::CAppearanceInstancePtr projectMaterial(const QString& id) const;
    QString exportedFile() const;

    Tour& m_tour;
    const std::unique_ptr<MainWindow>& m_window;
    QTemporaryDir m_folder;
    Documents m_libraryBefore;
    QImage m_drawingBefore;
    QString m_copy;
};
