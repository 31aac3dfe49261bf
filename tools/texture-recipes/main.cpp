// Makes the textures of the material library from their recipes.
#include "ContactSheet.h"
#include "Recipe.h"
#include "Sky.h"

#include <QCommandLineParser>
#include <QDir>
#include <QGuiApplication>
#include <QtConcurrent>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace {

struct Options {
    QString recipes, out, only, sheet, sky;
    int size = 0;  ///< 0 when what was given is none
    bool normals = false;
};

/// The captions of a contact sheet need the platform's fonts, though no display; pictures need neither.
std::unique_ptr<QCoreApplication> makeApplication(int& argc, char** argv)
{
    const bool hasSheet =
        std::any_of(argv, argv + argc, [](const char* given) { return QByteArray(given).startsWith("--sheet"); });
    if (!hasSheet)
        return std::make_unique<QCoreApplication>(argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<QGuiApplication>(argc, argv);
}

Options parse(const QCoreApplication& application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Makes seamless textures from recipes."));
    parser.addHelpOption();
    parser.addOptions({{"recipes", "The folder of the recipe files.", "folder"},
                       {"out", "The folder that the pictures go to.", "folder"},
                       {"only", "Make only names that match this pattern.", "pattern", "*"},
                       {"size", "The side of a picture in pixels (16 to 4096).", "pixels", "512"},
                       {"normals", "Also make the normal maps of the recipes that have relief."},
                       {"sheet", "Also draw a contact sheet to this file.", "file"},
                       {"sky", "Make the six faces of the sky box in this folder, and nothing else.", "folder"}});
    parser.process(application);
    const int size = parser.value("size").toInt();
    return {parser.value("recipes"), parser.value("out"), parser.value("only"),
            parser.value("sheet"),   parser.value("sky"), size >= 16 && size <= 4096 ? size : 0,
            parser.isSet("normals")};
}

/// False when a recipe could not be made; each is told on the error output.
bool makeAll(const QStringList& names, const Options& options)
{
    const auto make = [&options](const QString& name) {
        return makeTexture(QDir(options.recipes).filePath(name + QStringLiteral(".json")), options.out, options.size,
                           options.normals)
            .problem;
    };
    bool good = true;
    for (const QString& problem :
         QtConcurrent::blockingMapped<QStringList>(names, std::function<QString(const QString&)>(make))) {
        if (!problem.isEmpty())
            std::fprintf(stderr, "%s\n", qPrintable(problem));
        good = good && problem.isEmpty();
    }
    return good;
}

int makeSkyBox(const Options& options)
{
    const QString problem = options.size == 0 || !QDir().mkpath(options.sky)
                                ? QStringLiteral("nowhere to put the sky box, or no size that it can have: see --help")
                                : makeSky(options.sky, options.size);
    if (!problem.isEmpty())
        std::fprintf(stderr, "%s\n", qPrintable(problem));
    return problem.isEmpty() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv)
{
    const auto application = makeApplication(argc, argv);
    const Options options = parse(*application);
    if (!options.sky.isEmpty())
        return makeSkyBox(options);
    QStringList names;
    for (const QFileInfo& file :
         QDir(options.recipes).entryInfoList({options.only + QStringLiteral(".json")}, QDir::Files, QDir::Name))
        names.append(file.completeBaseName());
    if (options.size == 0 || options.out.isEmpty() || names.isEmpty() || !QDir().mkpath(options.out)) {
        std::fprintf(stderr, "no recipes, nowhere to put the pictures, or no size that they can have: see --help\n");
        return 2;
    }
    const bool good = makeAll(names, options);
    return good && (options.sheet.isEmpty() || drawContactSheet(names, options.out, options.sheet)) ? 0 : 1;
}
