#pragma once

#include <kiv/AppearanceLibraryManager.h>

#include <QHash>
#include <QSet>

/// Points texture files of favourites at the copies that lie in the user's own favourites folder, whose place differs
/// from one machine and account to the next. One object serves one pass over the favourites: it reads each folder once.
class CFavoriteTexturePaths {
public:
    explicit CFavoriteTexturePaths(const kiv::CAppearanceLibraryManager& manager);

    /// A file that is not found in the favourites folder keeps its stored path.
    void Reroot(const kiv::CAppearanceInstance& appearance);

private:
    bool exists(const QString& tail);
    const QSet<QString>& namesIn(const QString& folder);

    QString m_root;
    QHash<QString, QSet<QString>> m_names;  ///< of the files in a folder below the root, case folded
};
