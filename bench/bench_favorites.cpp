// Loading a folder of favourites through the dialog against reading and bare-parsing the same files.
#include "Ratios.h"

#include <LibraryGenerator.h>
#include <MaterialLibraryWidget.h>

#include <kiv/AppearanceLibraryParser.h>
#include <kiv/AppearanceParser.h>

#include <QApplication>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>
#include <QTextCodec>

#include <simdjson.h>

namespace {

constexpr int FileCount = 5000;

struct Profile {
    QTemporaryDir folder;
    kiv::CMaterialLibrary library;

    Profile()
    {
        const std::wstring data = QStringLiteral(MATERIAL_DATA_DIR).toStdWString();
        library.Open({data, data + L"/textures", folder.path().toStdWString()});
        writeFavorites();
    }

    QString favorites() const { return folder.filePath(QStringLiteral("Favorite Library")); }

private:
    void writeFavorites()
    {
        const auto generated = std::make_shared<kiv::CAppearanceLibrary>();
        kiv::CAppearanceLibraryManager& manager = *library.GetMaterialManager();
        kiv::CAppearanceLibraryParser(manager).AppearanceLibraryFromString(generated, GenerateLibrary({FileCount}), "");
        const kiv::CAppearanceParser parser(manager);
        QDir().mkpath(favorites());
        for (const auto& entry : *generated) {
            QFile file(favorites() + QLatin1Char('/') + QString::fromStdString(entry.first) + QStringLiteral(".json"));
            if (file.open(QIODevice::WriteOnly))
                file.write(QByteArray::fromStdString(parser.AppearanceToString(entry.second)));
        }
    }
};

Profile& profile()
{
    static Profile instance;
    return instance;
}

/// The dialog with its loading step open to the benchmark.
class LoadingDialog : public CMaterialLibraryWidget {
public:
    LoadingDialog() : CMaterialLibraryWidget(&profile().library, false, nullptr, false, "Customer Library", true) {}
    using CMaterialLibraryWidget::LoadApperanceLibrary;
};

void bareFolder(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        simdjson::dom::parser parser;
        QDirIterator files(profile().favorites(), {QStringLiteral("*.json")}, QDir::Files);
        while (files.hasNext()) {
            QFile file(files.next());
            if (!file.open(QIODevice::ReadOnly))
                state.SkipWithError("cannot read");
            const QByteArray bytes = file.readAll();
            benchmark::DoNotOptimize(parser.parse(bytes.constData(), size_t(bytes.size())).error());
        }
    }
}

void loadFolder(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        // As at the start of a program: what an earlier run loaded would be released within the time of this one.
        profile().library.GetMaterialManager()->DeleteUserAppearanceLibrary("Favorite Library");
        auto dialog = std::make_unique<LoadingDialog>();
        state.ResumeTiming();
        dialog->LoadApperanceLibrary(profile().folder.path().toStdWString(), "Favorite Library");
        state.PauseTiming();
        const auto favorites = profile().library.GetMaterialManager()->FindUserAppearanceLibrary("Favorite Library");
        if (favorites->count() != FileCount)
            state.SkipWithError("favourites are missing");
        dialog.reset();
        state.ResumeTiming();
    }
}

}  // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    benchmark::RegisterBenchmark("bareFolder", bareFolder)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("loadFolder", loadFolder)->Unit(benchmark::kMillisecond);
    return runBenchmarks(
        argc, argv,
        {{"a folder of 5,000 favourites / reading and bare-parsing the same files", "loadFolder", "bareFolder", 2.0}});
}
