#include "RecentFiles.h"

#include <QFileInfo>

namespace {

constexpr int MaxFiles = 6;
const QString Key = QStringLiteral("recentFiles");

}  // namespace

RecentFiles::RecentFiles(const QString& profile) : m_settings(profile + "/material-host.ini", QSettings::IniFormat)
{
}

QStringList RecentFiles::list() const
{
    return m_settings.value(Key).toStringList();
}

void RecentFiles::add(const QString& path)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    QStringList files = list();
    files.removeAll(absolute);
    files.prepend(absolute);
    m_settings.setValue(Key, QStringList(files.mid(0, MaxFiles)));
}

void RecentFiles::remove(const QString& path)
{
    QStringList files = list();
    files.removeAll(path);
    m_settings.setValue(Key, files);
}
