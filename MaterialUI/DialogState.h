#pragma once

#include <QString>
#include <kiv/AppearanceLibraryManager.h>

class CAppearanceLibraryBrowserCtrl;
class CMaterialLibraryForm;
class QDialog;
class QSettings;

/// What a user arranged in the dialog, kept from one opening to the next in "material-dialog.ini" below the favourite
/// library path: the dialog's size, the splitter, the lower browser's library, each browser's category and sort order,
/// the body and shading of the preview. Without that path nothing is kept. A file that cannot be read or written, or
/// holds nonsense, counts for nothing. Of two dialogs the one closed last is remembered.
class CDialogState {
public:
    /// All are borrowed.
    CDialogState(const kiv::CAppearanceLibraryManager& manager, QDialog& dialog, const CMaterialLibraryForm& form);

    /// Arranges a dialog that was just made. No selection is announced.
    void Restore() const;
    /// The category of the favourites, which are there later than the dialog.
    void RestoreFavorites() const;
    void Save() const;

private:
    bool isReadable() const;
    void restoreSize(const QSettings& settings) const;
    void restoreSplitter(const QSettings& settings) const;
    void restorePreview(const QSettings& settings) const;
    void saveSplitter(QSettings& settings) const;

    QString m_file;
    QDialog& m_dialog;
    const CMaterialLibraryForm& m_form;
};
