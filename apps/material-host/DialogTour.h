#pragma once

#include <kiv/MaterialLibrary.h>

#include <QImage>
#include <QMap>
#include <QString>

#include <functional>

class CAppearanceLibraryBrowserCtrl;
class MainWindow;
class QDialog;
class QModelIndex;
class QWidget;

/// What tours do in the open material dialog, with the mouse.
class DialogTour {
public:
    explicit DialogTour(kiv::CMaterialLibrary& library) : m_library(library) {}

protected:
    using Documents = QMap<QString, std::string>;  // by the material's id

    QDialog& dialog() const;
    /// Of the name "ProjectLibrary" or "SystemLibrary".
    CAppearanceLibraryBrowserCtrl& browser(const char* name) const;
    kiv::CAppearanceInstancePtr systemMaterial(const kiv::String& name) const;
    static QString idOf(const kiv::CAppearanceInstancePtr& material);

    void awaitOpen() const;
    /// The progress dialog of loading them comes up a little after the dialog has opened.
    void awaitFavorites() const;
    /// The project library, byte for byte.
    Documents projectLibrary() const;
    /// The elevation with all its textures.
    QImage drawing(MainWindow& window) const;
    /// A point of the view that shows the element, uncovered. `elementAt` tells what the view shows at a point.
    static QPoint pointOn(const QWidget& view, const QString& elementId,
                          const std::function<QString(const QPoint&)>& elementAt);
    /// Of the row in the browser's table; not valid when there is none.
    QModelIndex row(const char* browserName, const QString& id) const;
    QString nameInRow(const char* browserName, const QString& id) const;
    void showCategory(const QString& path) const;
    void clickMaterial(const kiv::CAppearanceInstancePtr& material) const;
    /// The lit body, once it is shown.
    QWidget& preview() const;
    void closeDialog(QWidget& window, const std::function<void()>& how) const;

    kiv::CMaterialLibrary& m_library;
};
