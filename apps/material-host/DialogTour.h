#pragma once

#include <kiv/MaterialLibrary.h>

#include <QString>

#include <functional>

class CAppearanceLibraryBrowserCtrl;
class QDialog;
class QWidget;

/// What tours do in the open material dialog, with the mouse.
class DialogTour {
public:
    explicit DialogTour(kiv::CMaterialLibrary& library) : m_library(library) {}

protected:
    QDialog& dialog() const;
    /// Of the name "ProjectLibrary" or "SystemLibrary".
    CAppearanceLibraryBrowserCtrl& browser(const char* name) const;
    kiv::CAppearanceInstancePtr systemMaterial(const kiv::String& name) const;
    static QString idOf(const kiv::CAppearanceInstancePtr& material);

    void awaitOpen() const;
    void showCategory(const QString& path) const;
    void clickMaterial(const kiv::CAppearanceInstancePtr& material) const;
    /// The lit body, once it is shown.
    QWidget& preview() const;
    void closeDialog(QWidget& window, const std::function<void()>& how) const;

    kiv::CMaterialLibrary& m_library;
};
