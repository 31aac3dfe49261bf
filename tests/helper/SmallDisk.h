#pragma once

#include <QString>

/// A disk of 64 KiB at a folder of a test, that can be filled or made read-only. It is a real one where this process
/// may mount, as it may in a namespace of its own; elsewhere the sizes of files are limited and the folder's rights
/// are taken away.
class SmallDisk {
public:
    /// Before there is a second thread: only then a process may get its own namespace.
    static void Prepare();

    explicit SmallDisk(const QString& folder);
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    /// Leaves room for no file, or for one small one, until RoomAgain().
    void Fill(bool leaveOne);
    void RoomAgain();
    /// False when nothing stops this process from writing (the administrator without a disk of his own).
    bool MakeReadOnly();

private:
    QString m_folder;
    bool m_isMounted;
};
