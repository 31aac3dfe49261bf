#pragma once

#include "DialogTour.h"
#include "HostOptions.h"
#include "Tour.h"

#include <QImage>
#include <QMap>
#include <QTemporaryDir>

#include <memory>

class CloudTour;
class EditTour;
class KeyboardTour;
class MainWindow;
class OperationsTour;
class SpaceTour;

/// The guided tour through the host's main job: from the start of the program to a project that is saved and opened
/// again. Each step uses mouse and keyboard only and checks what came of it.
class HostTour : private DialogTour {
public:
    HostTour(kiv::CMaterialLibrary& library, const HostOptions& options);
    ~HostTour();

    /// 0, or 1 when a step did not do what it says.
    int run();

private:
    void keepPart(std::vector<TourStep>& steps) const;
    void start();
    void selectElement();
    void openLibrary();
    void showFavorites();
    void showSystem();
    void browseCategory();
    void sort(Qt::SortOrder order);
    void search(const QString& keyword);
    void pickMaterial();
    void apply();
    void tryRoof();
    void cancel();
    void undo();
    void redo();
    void save();
    void change();
    void reopen();
    void refuse();
    void zoom();
    void wholeBuilding();

    void collectFavorites();
    void clickElement(const QString& elementId);
    QPoint pointIn(const QString& elementId) const;
    QStringList shownNames() const;
    QImage drawing();
    QImage drawing(const QString& elementId);
    Documents documents() const;  // by element

    HostOptions m_options;
    Tour m_tour;
    QTemporaryDir m_folder;
    std::unique_ptr<MainWindow> m_window;
    kiv::CAppearanceInstancePtr m_before;
    kiv::CAppearanceInstancePtr m_picked;
    QImage m_drawingBefore;
    QImage m_drawingApplied;
    QImage m_drawingSaved;
    Documents m_documentsSaved;
    std::unique_ptr<SpaceTour> m_space;
    std::unique_ptr<EditTour> m_edit;
    std::unique_ptr<OperationsTour> m_operations;
    std::unique_ptr<KeyboardTour> m_keyboard;
    std::unique_ptr<CloudTour> m_cloud;
};
