#pragma once

#include <QDateTime>
#include <QMetaType>
#include <QString>
#include <QVector>

/// What requests answer. `code` is empty on success, else one of the service's codes "NUVS_..." or a status of the
/// server. All records are values.

struct NUVSBaseInfo {
    QString code;
};

struct NUVSLoginInfo {
    QString code;
    bool success = false;
};

struct NUVSLogoutInfo {
    QString code;
};

struct NUVSCloudFileItem {
    QString id;    ///< opaque; of a folder what createFolder, children and upload take, of a file what download takes
    QString name;  ///< a plain name: it never leads out of a folder
    bool isFolder = false;
    qint64 size = -1;    ///< bytes of a file, -1 when the server does not tell
    QDateTime modified;  ///< invalid when the server does not tell
};

struct NUVSCloudChildren {
    QString code;
    QVector<NUVSCloudFileItem> items;  ///< in the order of their names
};

struct NUVSCloudCreateFolder {
    QString code;
    QString id;  ///< also when the folder was there already ("NUVS_000001")
    QString name;
};

struct NUVSCloudDelFile {
    QString code;
    QString id;
};

struct NUVSCloudUploadFile {
    QString code;
    QString id;
    QString name;
    qint64 size = -1;
};
