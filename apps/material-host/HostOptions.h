#pragma once

#include <QString>
#include <QStringList>

/// What the command line asks for.
struct HostOptions {
    QString project;       ///< empty: a new project
    QString data;          ///< folder of the shipped data; empty when none was found
    QString profile;       ///< the user's folder: favourites, recent files
    QString tour;          ///< folder for the pictures of the guided tour; empty: no tour
    QString tourPart;      ///< what the names of the tour's steps begin with, but for the first; empty: all of it
    QString language;      ///< "zh" or "en"
    QString cloudUser;     ///< these two: empty for what the profile has
    QString cloudAddress;  ///< of a WebDAV folder
    QString cloudFolder;   ///< where accounts without an address keep their files
    bool signIn = false;   ///< log in to the account, say how that went, and leave

    /// Leaves the program for --help and for arguments that make no sense.
    static HostOptions fromArguments(const QStringList& arguments);

    QString sampleProject() const { return data + "/projects/house.json"; }
};
