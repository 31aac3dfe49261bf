#include "SmallDisk.h"

#include <TestFiles.h>

#include <QFile>
#include <QFileInfo>

#include <csignal>

#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

constexpr int PageBytes = 4096;
constexpr int Pages = 16;
constexpr rlim_t SmallFile = 700;  // more than a small picture and less than a document

void limitFiles(rlim_t bytes)
{
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = qMin(bytes, limit.rlim_max);
    setrlimit(RLIMIT_FSIZE, &limit);
}

void tell(const char* file, const QByteArray& text)
{
    QFile map(QStringLiteral("/proc/self/") + file);
    if (map.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        map.write(text);
}

}  // namespace

void SmallDisk::Prepare()
{
    std::signal(SIGXFSZ, SIG_IGN);
    const QByteArray user = QByteArray::number(getuid());
    const QByteArray group = QByteArray::number(getgid());
    if (unshare(CLONE_NEWNS) != 0) {
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
            return;
        // Who is not mapped can make no file.
        tell("uid_map", user + ' ' + user + " 1");
        tell("setgroups", "deny");
        tell("gid_map", group + ' ' + group + " 1");
    }
    mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
}

SmallDisk::SmallDisk(const QString& folder)
    : m_folder(folder), m_isMounted(mount("tmpfs", QFile::encodeName(folder), "tmpfs", 0, "size=64k") == 0)
{
}

SmallDisk::~SmallDisk()
{
    RoomAgain();
    if (m_isMounted)
        umount2(QFile::encodeName(m_folder), MNT_DETACH);
    else
        QFile::setPermissions(m_folder, QFile::permissions(m_folder) | QFile::WriteOwner);
}

void SmallDisk::Fill(bool leaveOne)
{
    if (m_isMounted)
        writeFile(m_folder + "/filler", QByteArray((leaveOne ? Pages - 1 : Pages) * PageBytes, 'x'));
    else
        limitFiles(leaveOne ? SmallFile : 0);
}

void SmallDisk::RoomAgain()
{
    if (m_isMounted)
        QFile::remove(m_folder + "/filler");
    else
        limitFiles(RLIM_INFINITY);
}

bool SmallDisk::MakeReadOnly()
{
    if (m_isMounted)
        return mount("tmpfs", QFile::encodeName(m_folder), "tmpfs", MS_REMOUNT | MS_RDONLY, nullptr) == 0;
    QFile::setPermissions(m_folder, QFile::ReadOwner | QFile::ExeOwner);
    return !QFileInfo(m_folder).isWritable();
}
