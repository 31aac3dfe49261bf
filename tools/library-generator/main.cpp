#include "LibraryGenerator.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QSaveFile>
#include <QTextStream>

namespace {

int fail(const QString& reason)
{
    QTextStream(stderr) << "library-generator: " << reason << "\n";
    return 1;
}

bool writeFile(const QString& path, const std::function<bool(QSaveFile&)>& write)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && write(file) && file.commit();
}

bool writeLibrary(const CLibraryGenerator& generator, const QString& path)
{
    return writeFile(path, [&](QSaveFile& file) {
        return generator.WriteLibrary([&](const QByteArray& piece) { return file.write(piece) == piece.size(); });
    });
}

bool writeDocuments(const CLibraryGenerator& generator, const QString& folder, int count)
{
    if (!QDir().mkpath(folder))
        return false;
    for (int i = 0; i < count; ++i) {
        const QByteArray document = generator.Document(i);
        const QString path = QString("%1/%2.json").arg(folder).arg(i + 1, 6, 10, QChar('0'));
        if (!writeFile(path, [&](QSaveFile& file) { return file.write(document) == document.size(); }))
            return false;
    }
    return true;
}

void declareOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription("Makes a library of varied appearances, for measurements and tests.");
    parser.addHelpOption();
    parser.addOptions({{"count", "Number of appearances.", "N", "1000"},
                       {"templates", "Folder of template documents, instead of the shipped ones.", "DIR"},
                       {"out", "Library file to write.", "FILE"},
                       {"documents", "Folder to write one document a file into.", "DIR"},
                       {"bytes", "Size of a document, about.", "B", "2048"},
                       {"seed", "Another seed, other appearances.", "S", "1"}});
}

bool readOptions(const QCommandLineParser& parser, GeneratorOptions& options)
{
    bool countOk = false, bytesOk = false, seedOk = false;
    options.templates = parser.value("templates");
    options.count = parser.value("count").toInt(&countOk);
    options.bytes = parser.value("bytes").toInt(&bytesOk);
    options.seed = parser.value("seed").toULongLong(&seedOk);
    return countOk && bytesOk && seedOk && options.count >= 0 && options.bytes >= 0;
}

}  // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    declareOptions(parser);
    parser.process(application);

    GeneratorOptions options;
    if (!readOptions(parser, options) || parser.isSet("out") == parser.isSet("documents"))
        return fail("needs either --out FILE or --documents DIR; --help tells more");

    const CLibraryGenerator generator(options);
    if (!generator.GetError().isEmpty())
        return fail(generator.GetError());
    const bool written = parser.isSet("out") ? writeLibrary(generator, parser.value("out"))
                                             : writeDocuments(generator, parser.value("documents"), options.count);
    return written ? 0 : fail("cannot write " + parser.value(parser.isSet("out") ? "out" : "documents"));
}
