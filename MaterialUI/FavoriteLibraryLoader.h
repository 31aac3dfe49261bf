#pragma once

#include <kiv/AppearanceLibraryManager.h>

#include <QCoreApplication>
#include <QStringList>

class QWidget;

/// Reads the folder of favourites into a library, behind a modal progress dialog that stays responsive and can be
/// cancelled. Nested events run meanwhile.
class CFavoriteLibraryLoader {
    Q_DECLARE_TR_FUNCTIONS(CFavoriteLibraryLoader)

public:
    /// Manager and owner are borrowed; the owner is the parent of the progress dialog.
    CFavoriteLibraryLoader(const kiv::CAppearanceLibraryManager& manager, QWidget& owner)
        : m_manager(manager), m_owner(owner)
    {
    }

    /// Adds the appearances of the folder (a path of this machine) to the library. Files that cannot be read and ids
    /// that the library has are skipped; each appearance is added whole. When it is cancelled or the owner goes, what
    /// was read by then is there. True when the library has all that the folder has.
    bool Load(const QString& folder, kiv::CAppearanceLibrary& library);

private:
    const kiv::CAppearanceLibraryManager& m_manager;
    QWidget& m_owner;
};
