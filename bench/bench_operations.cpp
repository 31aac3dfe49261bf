// What a person does to the materials of a small and of a large project: copying, deleting and collecting.
#include "ProjectLibrary.h"
#include "Ratios.h"

#include <AppearanceLibraryBrowserCtrl.h>
#include <EditStack.h>
#include <MaterialLibraryWidget.h>

#include <QApplication>
#include <QTableWidget>
#include <QTextCodec>

namespace {

constexpr double TwoFramesMs = 2000.0 / 60;

/// The dialog with its operations open to the benchmark, on the screen and with nothing left to do.
class OperatedDialog : public CMaterialLibraryWidget {
public:
    OperatedDialog()
        : CMaterialLibraryWidget(&ProjectLibrary::Instance().Library(), false, nullptr, false, ProjectLibrary::Name,
                                 false)
    {
        show();
        for (int i = 0; i < 10; ++i)  // the preview is there after some turns of the event loop
            QCoreApplication::processEvents(QEventLoop::AllEvents, 100);
        finishEvents();
    }
    ~OperatedDialog() override { CEditStack::Instance().Clear(); }

    /// Up to what can be seen of it.
    void finishEvents()
    {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        repaint();
    }

    using CMaterialLibraryWidget::AddFavoriteAppearanceFunc;
    using CMaterialLibraryWidget::AppearanceDeletedFunc;
    using CMaterialLibraryWidget::CopyandAddAppearanceFunc;
};

kiv::CAppearanceInstancePtr source()
{
    return ProjectLibrary::Instance().Manager().GetSystemLibrary()->begin()->second;
}

/// With what is seen of it, or the operation alone, whose time must not depend on the size of the project.
enum class Until { Painted, Done };

void copy(benchmark::State& state, int count, Until until)
{
    const auto library = ProjectLibrary::Instance().Fill(count);
    OperatedDialog dialog;
    for ([[maybe_unused]] auto _ : state) {
        const auto made = dialog.CopyandAddAppearanceFunc(source());
        if (until == Until::Painted)
            dialog.finishEvents();
        state.PauseTiming();
        if (!made || library->FindInstance(made->GetId()) != made)
            state.SkipWithError("there is no copy");
        else
            dialog.AppearanceDeletedFunc(made);
        dialog.finishEvents();
        state.ResumeTiming();
    }
}

void remove(benchmark::State& state, int count, Until until)
{
    const auto library = ProjectLibrary::Instance().Fill(count);
    OperatedDialog dialog;
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        const auto made = dialog.CopyandAddAppearanceFunc(source());
        dialog.finishEvents();
        state.ResumeTiming();
        dialog.AppearanceDeletedFunc(made);
        if (until == Until::Painted)
            dialog.finishEvents();
        if (!made || library->FindInstance(made->GetId()))
            state.SkipWithError("it was not deleted");
    }
}

/// Always another look, since the same is collected once.
void collect(benchmark::State& state, int count, Until until)
{
    ProjectLibrary::Instance().Fill(count);
    OperatedDialog dialog;
    const auto look = ProjectLibrary::Instance().Library().CopyMaterial(source(), L"collected");
    static int turn = 0;
    for ([[maybe_unused]] auto _ : state) {
        look->SetTags("look " + std::to_string(++turn));
        const bool isCollected = dialog.AddFavoriteAppearanceFunc(look, "Stone");
        if (until == Until::Painted)
            dialog.finishEvents();
        if (!isCollected)
            state.SkipWithError("it was not collected");
    }
    ProjectLibrary::Instance().Manager().FindUserAppearanceLibrary(ProjectLibrary::Name)->DeleteInstance(look->GetId());
}

void add(const std::string& name, void (*function)(benchmark::State&, int, Until))
{
    const auto with = [=](const char* variant, int count, Until until) {
        benchmark::RegisterBenchmark((name + variant).c_str(),
                                     [=](benchmark::State& state) { function(state, count, until); })
            ->Unit(benchmark::kMillisecond)
            ->Iterations(20);
    };
    with("10", 10, Until::Done);
    with("10000", 10000, Until::Done);
    with("Painted", 10000, Until::Painted);
}

}  // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    add("copy", copy);
    add("delete", remove);
    add("favourite", collect);
    return runBenchmarks(argc, argv,
                         {{"copying into a project of 10,000 / two frames", "copyPainted", "", 1, TwoFramesMs},
                          {"deleting from it / two frames", "deletePainted", "", 1, TwoFramesMs},
                          {"collecting from it / two frames", "favouritePainted", "", 1, TwoFramesMs},
                          {"copying into a project of 10,000 / of 10", "copy10000", "copy10", 1.5},
                          {"deleting, the same", "delete10000", "delete10", 2},
                          {"collecting, the same", "favourite10000", "favourite10", 1.5}});
}
