#pragma once

#include <QDateTime>
#include <QImage>
#include <QString>

/// A picture as one cell shows it.
struct ThumbnailKey {
    enum Kind {
        MiddleNinth,  ///< the picture scaled to three times the cell; its middle fills the cell
        Unscaled,     ///< the picture pixel by pixel; its middle, where it is larger than the cell
    };
    Kind kind = MiddleNinth;
    QString file;  ///< a path of this machine
    QSize size;    ///< of the cell, in pixels of the device

    friend bool operator==(const ThumbnailKey& a, const ThumbnailKey& b)
    {
        return a.kind == b.kind && a.size == b.size && a.file == b.file;
    }
    friend uint qHash(const ThumbnailKey& key, uint seed = 0)
    {
        return qHash(key.file, seed) ^ uint(key.size.width() << 16 | key.size.height() << 1 | key.kind);
    }
};

/// What tells that a file was changed. Bytes is -1 for a file that is not there.
struct FileStamp {
    qint64 bytes = -1;
    QDateTime modified;

    friend bool operator==(const FileStamp& a, const FileStamp& b)
    {
        return a.bytes == b.bytes && a.modified == b.modified;
    }
};

/// Asks the file system; any thread.
FileStamp StampOf(const QString& file);

/// Decodes the file; a null image for what is no picture. Blocking, any thread.
QImage LoadThumbnail(const ThumbnailKey& key);
