#pragma once

#include <QSettings>
#include <QStringList>

/// The projects opened or saved last, newest first, kept in the profile.
class RecentFiles {
public:
    explicit RecentFiles(const QString& profile);

    QStringList list() const;
    void add(const QString& path);
    void remove(const QString& path);

private:
    mutable QSettings m_settings;
};
