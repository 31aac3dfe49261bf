#pragma once

#include "FavoriteTexturePaths.h"

#include <kiv/AppearanceLibraryManager.h>
#include <kiv/AppearanceParser.h>

#include <QCoreApplication>
#include <QHash>
#include <QStringList>

class QWidget;

/// Reads the folder of favourites into a library, behind a modal progress dialog that stays responsive and can be
/// cancelled. Nested events run meanwhile. One object serves one loading.
class CFavoriteLibraryLoader {
    Q_DECLARE_TR_FUNCTIONS(CFavoriteLibraryLoader)

public:
    /// Manager and owner are borrowed; the owner is the parent of the progress dialog.
    CFavoriteLibraryLoader(const kiv::CAppearanceLibraryManager& manager, QWidget& owner)
        : m_manager(manager), m_owner(owner), m_paths(manager)
    {
    }

    /// Adds the appearances of the folder (a path of this machine, made when missing) to the library. Files that cannot
    /// be read and ids that the library has are skipped; each appearance is added whole. When it is cancelled or the
    /// owner goes, what was read by then is there. True when the library has all that the folder has.
    bool Load(const QString& folder, kiv::CAppearanceLibrary& library);

    /// The file of each appearance by its id, which may be named otherwise than the id.
    const QHash<QString, QString>& GetFiles() const { return m_files; }

    /// One line on what the last loading could not read, and what lies behind it; empty when nothing was refused.
    QString GetNotice() const;
    QString GetNoticeDetails() const;

private:
    QStringList filesOf(const QString& folder);
    void load(const QString& file, kiv::CAppearanceParser& parser, kiv::CAppearanceLibrary& library);
    void refuse(const QString& reason);

    const kiv::CAppearanceLibraryManager& m_manager;
    QWidget& m_owner;
    CFavoriteTexturePaths m_paths;
    QString m_folderReason;  ///< why there is no folder to read
    QStringList m_refusals;  ///< file and reason each, cut where they are endless
    QHash<QString, QString> m_files;
};
