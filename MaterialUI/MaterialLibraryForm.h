#pragma once

#include <kiv/MaterialLibrary.h>

#include <QCoreApplication>

class AppearanceLibraryProvider;
class CAppearanceDynamicEditor;
class CAppearanceHeading;
class CAppearanceLibraryBrowserCtrl;
class CAppearancePreviewerCtrl;
class QBoxLayout;
class QDialog;
class QFrame;
class QLabel;
class QLineEdit;
class QPushButton;
class QScrollArea;
class QSplitter;
class QToolButton;
class QWidget;

/// The widgets of the material dialog and their places. They belong to the dialog; hosts find them by object name.
class CMaterialLibraryForm {
    Q_DECLARE_TR_FUNCTIONS(CMaterialLibraryForm)

public:
    void Build(QDialog& dialog, kiv::CMaterialLibrary& library, AppearanceLibraryProvider* provider, bool cloudEnabled);
    /// One quiet line in the bottom bar, with details as its tool tip; an empty one goes away.
    void ShowNotice(const QString& text, const QString& details) const;

    QLineEdit* searchLine = nullptr;
    CAppearanceLibraryBrowserCtrl* projectBrowser = nullptr;
    CAppearanceLibraryBrowserCtrl* systemBrowser = nullptr;
    QSplitter* splitter = nullptr;  ///< of the search line and the two browsers
    CAppearancePreviewerCtrl* previewer = nullptr;
    CAppearanceHeading* heading = nullptr;
    CAppearanceDynamicEditor* editor = nullptr;
    QScrollArea* editorArea = nullptr;
    QPushButton* applyButton = nullptr;
    QToolButton* synchronizeButton = nullptr;  ///< of the system browser
    QLabel* accountLabel = nullptr;            ///< whether the account is on line
    QLabel* synchronizationLabel = nullptr;    ///< how many favourites wait, failed and succeeded
    QLabel* noticeLabel = nullptr;             ///< what could not be loaded

private:
    QWidget* buildBrowsers();
    QWidget* buildRightColumn();
    QWidget* buildEditorArea();
    QBoxLayout* buildBottomBar(bool cloudEnabled);
    QFrame* makeLine(bool isVertical, const char* name);

    QDialog* m_dialog = nullptr;
};
