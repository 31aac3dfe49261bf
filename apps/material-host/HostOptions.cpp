#include "HostOptions.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>

namespace {

/// Beside the build's "bin" folder, or where the installation puts it.
QString findData()
{
    const QString program = QCoreApplication::applicationDirPath();
    for (const char* place : {"/../data", "/../share/material-ui"})
        if (QFileInfo(program + place + "/library.json").isFile())
            return QFileInfo(program + place).canonicalFilePath();
    return {};
}

}  // namespace

HostOptions HostOptions::fromArguments(const QStringList& arguments)
{
    const QCommandLineOption data("data", "Folder of the shipped library, templates and textures.", "folder");
    const QCommandLineOption profile("profile", "The user's folder, with favourites and recent files.", "folder");
    const QCommandLineOption tour("tour", "Make the guided tour and leave its pictures in the folder.", "folder");
    const QCommandLineOption part("tour-part", "Only the steps of the tour whose names begin so, as in \"cloud\".",
                                  "name");
    const QCommandLineOption language("language", "Language of the texts: zh (default) or en.", "language", "zh");
    const QCommandLineOption user("cloud-user", "User of the cloud account.", "name");
    const QCommandLineOption address("cloud-address",
                                     "WebDAV folder of the cloud account; the password is taken from the environment "
                                     "variable MATERIAL_CLOUD_PASSWORD.",
                                     "address");
    const QCommandLineOption folder("cloud-folder", "Where accounts without an address keep their files.", "folder");
    const QCommandLineOption signIn("sign-in", "Log in to the cloud account, say how that went, and leave.");
    QCommandLineParser parser;
    parser.setApplicationDescription("A small building whose elements take materials.");
    parser.addHelpOption();
    parser.addOptions({data, profile, tour, part, language, user, address, folder, signIn});
    parser.addPositionalArgument("project", "Project to open.", "[project.json]");
    parser.process(arguments);
    if (parser.positionalArguments().size() > 1 || !QStringList{"zh", "en"}.contains(parser.value(language)))
        parser.showHelp(2);

    HostOptions options;
    options.project = parser.positionalArguments().value(0);
    options.data = parser.isSet(data) ? QFileInfo(parser.value(data)).absoluteFilePath() : findData();
    options.profile = parser.isSet(profile) ? QFileInfo(parser.value(profile)).absoluteFilePath()
                                            : QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    options.tour = parser.isSet(tour) ? QFileInfo(parser.value(tour)).absoluteFilePath() : QString();
    options.tourPart = parser.value(part);
    options.language = parser.value(language);
    options.cloudUser = parser.value(user);
    options.cloudAddress = parser.value(address);
    options.cloudFolder = parser.isSet(folder) ? QFileInfo(parser.value(folder)).absoluteFilePath() : QString();
    options.signIn = parser.isSet(signIn);
    return options;
}
