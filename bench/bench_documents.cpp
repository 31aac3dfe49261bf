// Reading appearance documents against a bare parse of the same bytes, and what a library of them weighs.
#include "Ratios.h"

#include <LibraryGenerator.h>

#include <kiv/AppearanceLibraryParser.h>
#include <kiv/AppearanceParser.h>
#include <kiv/MaterialLibrary.h>

#include <QApplication>
#include <QTextCodec>

#include <malloc.h>
#include <simdjson.h>

namespace {

constexpr int DocumentCount = 20000;
constexpr int LargeCount = 50000;

std::unique_ptr<kiv::CMaterialLibrary> openTemplates()
{
    auto library = std::make_unique<kiv::CMaterialLibrary>();
    const std::wstring data = QStringLiteral(MATERIAL_DATA_DIR).toStdWString();
    library->Open({data, data + L"/textures", std::wstring()});
    return library;
}

kiv::CAppearanceLibraryManager& manager()
{
    static const std::unique_ptr<kiv::CMaterialLibrary> library = openTemplates();
    return *library->GetMaterialManager();
}

const std::string& libraryText(int count)
{
    static std::map<int, std::string> texts;
    std::string& text = texts[count];
    if (text.empty())
        text = GenerateLibrary({count});
    return text;
}

/// The library's documents one by one, as they lie in files.
const std::vector<std::string>& documents()
{
    static const std::vector<std::string> texts = [] {
        const auto library = std::make_shared<kiv::CAppearanceLibrary>();
        kiv::CAppearanceLibraryParser(manager()).AppearanceLibraryFromString(library, libraryText(DocumentCount), "");
        const kiv::CAppearanceParser parser(manager());
        std::vector<std::string> result;
        for (const auto& entry : *library)
            result.push_back(parser.AppearanceToString(entry.second));
        return result;
    }();
    return texts;
}

void libraryBare(benchmark::State& state)
{
    const simdjson::padded_string text(libraryText(DocumentCount));
    for ([[maybe_unused]] auto _ : state) {
        simdjson::dom::parser parser;
        benchmark::DoNotOptimize(parser.parse(text).error());
    }
}

void libraryRead(benchmark::State& state)
{
    const std::string& text = libraryText(DocumentCount);
    for ([[maybe_unused]] auto _ : state) {
        const auto library = std::make_shared<kiv::CAppearanceLibrary>();
        kiv::CAppearanceLibraryParser(manager()).AppearanceLibraryFromString(library, text, "");
        if (library->count() != DocumentCount)
            state.SkipWithError("documents were refused");
    }
}

void documentsBare(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        simdjson::dom::parser parser;
        for (const std::string& text : documents())
            benchmark::DoNotOptimize(parser.parse(text).error());
    }
}

void documentsRead(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        kiv::CAppearanceParser parser(manager());
        std::vector<kiv::CAppearanceInstancePtr> read;
        read.reserve(documents().size());
        for (const std::string& text : documents())
            read.push_back(parser.AppearanceFromString(text));
        if (!read.back())
            state.SkipWithError("a document was refused");
    }
}

void documentsWrite(benchmark::State& state)
{
    const kiv::CAppearanceParser parser(manager());
    const kiv::CAppearanceInstancePtr appearance =
        kiv::CAppearanceParser(manager()).AppearanceFromString(documents()[0]);
    for ([[maybe_unused]] auto _ : state) {
        for (int i = 0; i < DocumentCount; ++i)
            benchmark::DoNotOptimize(parser.AppearanceToString(appearance));
    }
}

CountedClaim memoryOfLargeLibrary()
{
    const std::string text = GenerateLibrary({LargeCount});
    const auto library = std::make_shared<kiv::CAppearanceLibrary>();
    malloc_trim(0);
    const size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
    kiv::CAppearanceLibraryParser(manager()).AppearanceLibraryFromString(library, text, "");
    const size_t after = mallinfo2().uordblks + mallinfo2().hblkhd;
    return {"bytes in memory per appearance of a library of 50,000 / bytes of its text",
            double(after - before) / LargeCount, double(text.size()) / LargeCount, 4.0};
}

}  // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    const CountedClaim memory = memoryOfLargeLibrary();
    using Case = std::pair<const char*, void (*)(benchmark::State&)>;
    for (const auto& [name, function] :
         {Case{"libraryBare", libraryBare}, Case{"libraryRead", libraryRead}, Case{"documentsBare", documentsBare},
          Case{"documentsRead", documentsRead}, Case{"documentsWrite", documentsWrite}})
        benchmark::RegisterBenchmark(name, function)->Unit(benchmark::kMillisecond);
    return runBenchmarks(
        argc, argv,
        {{"a library file of 20,000 appearances / simdjson's bare parse of it", "libraryRead", "libraryBare", 4.0},
         {"20,000 documents one by one / simdjson's bare parse of each", "documentsRead", "documentsBare", 4.0},
         {"writing 20,000 documents / simdjson's bare parse of as many", "documentsWrite", "documentsBare", 4.0}},
        {memory});
}
