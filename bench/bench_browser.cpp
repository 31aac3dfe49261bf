// Filling, searching and scrolling the library browser. The floor of filling is a plain tree and table with the same
// texts.
#include "Ratios.h"

#include <AppearanceLibraryBrowserCtrl.h>
#include <LibraryGenerator.h>

#include <kiv/AppearanceLibraryParser.h>
#include <kiv/MaterialLibrary.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QScrollBar>
#include <QTableWidget>
#include <QTextCodec>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <map>

namespace {

constexpr double FrameMs = 16;

kiv::CMaterialLibrary& materialLibrary()
{
    static kiv::CMaterialLibrary library;
    static const bool opened = [] {
        const std::wstring data = QStringLiteral(MATERIAL_DATA_DIR).toStdWString();
        return library.Open({data, data + L"/textures", std::wstring()});
    }();
    Q_UNUSED(opened)
    return library;
}

kiv::CAppearanceLibraryManager& manager()
{
    return *materialLibrary().GetMaterialManager();
}

/// A system library of `count` appearances; the same object every time.
kiv::CAppearanceLibraryPtr libraryOf(int count)
{
    static std::map<int, kiv::CAppearanceLibraryPtr> libraries;
    kiv::CAppearanceLibraryPtr& library = libraries[count];
    if (!library) {
        library = std::make_shared<kiv::CAppearanceLibrary>();
        library->SetName("System Library");
        library->SetId("System Library");
        kiv::CAppearanceLibraryParser(manager()).AppearanceLibraryFromString(library, GenerateLibrary({count}), "");
    }
    return library;
}

QString shownName(const kiv::CAppearanceInstance& appearance)
{
    return QString::fromStdString(manager().LocalizeAppearanceString(appearance.GetName()));
}

/// The categories of the same library in a plain tree, its names in a plain table of two columns.
struct PlainBrowser : QWidget {
    QTreeWidget tree;
    QTableWidget table;

    PlainBrowser()
    {
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(&tree);
        layout->addWidget(&table);
        table.setColumnCount(2);
    }

    void fill(const kiv::CAppearanceLibrary& library)
    {
        tree.setUniformRowHeights(true);
        auto* root = new QTreeWidgetItem(&tree, {QStringLiteral("System Library")});
        std::map<std::string, QList<QTreeWidgetItem*>> categories;
        table.setRowCount(int(library.count()));
        int row = 0;
        for (const auto& entry : library) {
            const QString name = shownName(*entry.second);
            categories[entry.second->GetCategory()].append(new QTreeWidgetItem({name}));
            table.setItem(row, 0, new QTableWidgetItem);
            table.setItem(row++, 1, new QTableWidgetItem(name));
        }
        for (const auto& category : categories)
            (new QTreeWidgetItem(root, {QString::fromStdString(category.first)}))->addChildren(category.second);
        tree.setCurrentItem(root);
    }
};

void fillPlain(benchmark::State& state, int count)
{
    const auto library = libraryOf(count);
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        auto browser = std::make_unique<PlainBrowser>();
        browser->resize(300, 600);
        browser->show();
        QCoreApplication::processEvents();
        state.ResumeTiming();
        browser->fill(*library);
        state.PauseTiming();
        browser.reset();
        state.ResumeTiming();
    }
}

std::unique_ptr<CAppearanceLibraryBrowserCtrl> makeBrowser()
{
    auto browser = std::make_unique<CAppearanceLibraryBrowserCtrl>(manager(), nullptr, nullptr, false);
    browser->resize(300, 600);
    browser->show();
    QCoreApplication::processEvents();
    return browser;
}

void fillProduct(benchmark::State& state, int count)
{
    const auto library = libraryOf(count);
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        auto browser = makeBrowser();
        state.ResumeTiming();
        browser->AddLibrary(library);
        state.PauseTiming();
        browser.reset();
        state.ResumeTiming();
    }
}

/// The search over 50,000, the selection restored between searches so that each one moves it.
void search(benchmark::State& state, const char* keyword)
{
    auto browser = makeBrowser();
    browser->AddLibrary(libraryOf(50000));
    QCoreApplication::processEvents();
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        browser->GetTreeWidget()->setCurrentItem(browser->GetTreeWidget()->topLevelItem(0));
        QCoreApplication::processEvents();
        state.ResumeTiming();
        browser->onSearchKeyWord(QString::fromUtf8(keyword));
    }
}

/// Times every paint event of a widget's viewport.
class PaintTimer : public QObject {
public:
    explicit PaintTimer(QWidget* viewport) : m_viewport(viewport) { viewport->installEventFilter(this); }

    double longestMs() const { return m_longest; }
    int count() const { return m_count; }
    void reset() { m_longest = m_count = 0; }

protected:
    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() != QEvent::Paint || m_inside)
            return false;
        m_inside = true;
        QElapsedTimer timer;
        timer.start();
        QCoreApplication::sendEvent(object, event);
        m_longest = std::max(m_longest, double(timer.nsecsElapsed()) / 1e6);
        ++m_count;
        m_inside = false;
        return true;
    }

private:
    QWidget* m_viewport;
    bool m_inside = false;
    double m_longest = 0;
    int m_count = 0;
};

/// The longest paint event while the system library is scrolled through, page by page, `rounds` times.
double longestPaint(QAbstractScrollArea* area, PaintTimer& timer, int rounds)
{
    timer.reset();
    QScrollBar* bar = area->verticalScrollBar();
    for (int round = 0; round < rounds; ++round) {
        for (int value = 0; value <= bar->maximum(); value += std::max(1, bar->pageStep() / 3)) {
            bar->setValue(value);
            QCoreApplication::processEvents();
        }
    }
    return timer.longestMs();
}

std::vector<CountedClaim> scrolling()
{
    auto browser = makeBrowser();
    browser->AddLibrary(manager().GetSystemLibrary());
    QTableWidget* table = browser->GetTableWidget();
    PaintTimer timer(table->viewport());
    const double cold = longestPaint(table, timer, 1);
    longestPaint(table, timer, 10);
    const double warm = longestPaint(table, timer, 3);
    return {{"longest paint event while scrolling textured rows, cold (ms) / a frame", cold, FrameMs, 1},
            {"longest paint event while scrolling textured rows, warm (ms) / a frame", warm, FrameMs, 1}};
}

void add(const char* name, std::function<void(benchmark::State&)> function)
{
    benchmark::RegisterBenchmark(name, std::move(function))->Unit(benchmark::kMillisecond);
}

}  // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    const std::vector<CountedClaim> counted = scrolling();
    add("plain10000", [](auto& state) { fillPlain(state, 10000); });
    add("browser10000", [](auto& state) { fillProduct(state, 10000); });
    add("plain50000", [](auto& state) { fillPlain(state, 50000); });
    add("browser50000", [](auto& state) { fillProduct(state, 50000); });
    add("searchFirst", [](auto& state) { search(state, ""); });
    add("searchNone", [](auto& state) { search(state, "no such material anywhere"); });
    return runBenchmarks(argc, argv,
                         {{"AddLibrary of 10,000 / a plain tree and table", "browser10000", "plain10000", 1.5},
                          {"AddLibrary of 50,000 / a plain tree and table", "browser50000", "plain50000", 1.5},
                          {"AddLibrary of 50,000 / AddLibrary of 10,000", "browser50000", "browser10000", 6.0},
                          {"search in 50,000, first match / a frame of 16 ms", "searchFirst", "", 1, FrameMs},
                          {"search in 50,000, no match / a frame of 16 ms", "searchNone", "", 1, FrameMs}},
                         counted);
}
