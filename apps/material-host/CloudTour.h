#pragma once

#include "DialogTour.h"
#include "Tour.h"
#include "TourCloud.h"

#include <QMap>
#include <QTemporaryDir>

#include <memory>

class MainWindow;

/// The part of the guided tour that mirrors favourites: they go to the account, a second user folder gets them from
/// there, and a login elsewhere is noticed.
class CloudTour : private DialogTour {
public:
    /// `window` is made by a step before the first one here; the options have an account from then on.
    CloudTour(kiv::CMaterialLibrary& library, HostOptions& options, Tour& tour,
              const std::unique_ptr<MainWindow>& window);
    ~CloudTour();

    void addSteps(std::vector<TourStep>& steps);

private:
    using Files = QMap<QString, QByteArray>;  // of one folder, by name

    void refuseAddress();
    void logIn();
    void collect();
    void synchronise();
    void openSecondProfile();
    void noticeOtherLogin();

    void openLibrary(MainWindow& window) const;
    void showFavorites() const;
    void lookThroughFavorites(const QString& profile) const;
    void loginElsewhere() const;
    QString accountText() const;
    QString countsText() const;
    int favoriteRows() const;
    bool areAllMarked() const;
    Files favoriteTextures() const;
    static Files filesIn(const QString& folder, const QString& suffix);

    HostOptions& m_options;
    Tour& m_tour;
    const std::unique_ptr<MainWindow>& m_window;
    TourCloud m_cloud;
    int m_count = 0;  // of favourites
    QTemporaryDir m_secondProfile;
    std::unique_ptr<kiv::CMaterialLibrary> m_secondLibrary;
    std::unique_ptr<MainWindow> m_secondWindow;
};
