#pragma once

#include <QString>

/// Where favourites and their textures lie on this machine; the paths are the machine's own.
struct CloudFolders {
    QString favorites;  ///< a document for each favourite, named after its id
    QString textures;   ///< named after their content

    /// What the cloud is known to have: a copy of each document as it was sent or brought. Made anew by each dialog.
    QString records() const { return favorites + QStringLiteral("/CloudLib"); }
    QString document(const QString& id) const { return favorites + '/' + id + QStringLiteral(".json"); }
    QString record(const QString& id) const { return records() + '/' + id + QStringLiteral(".json"); }
};
